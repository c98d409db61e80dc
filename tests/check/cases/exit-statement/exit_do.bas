a = 1
do while a < 3  # problem: missing-loop@1
  a = a + 1
  exit do  # problem: exit-statement@3
loop
