dim a[3] : print ubound("a")  # expect: 3
global B[4] : print ubound("B")  # expect: 4
