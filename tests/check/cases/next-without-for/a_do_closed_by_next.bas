a = 1
do while a < 3
  a = a + 1
next  # problem: next-without-for@1
loop  # problem: loop-without-do@1
