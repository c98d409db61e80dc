a = 1
do while a =< 1  # problem: comparison-operator@12
  a = 2
loop
