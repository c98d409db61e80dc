a = 1
do  # problem: missing-while@1
  a = a + 1
loop while a < 3  # problem: missing-while@6
