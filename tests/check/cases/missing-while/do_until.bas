a = 1
do until a = 2  # problem: missing-while@4
  a = 2
loop
