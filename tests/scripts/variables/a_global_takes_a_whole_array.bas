global List
dim a[2]
a[0] = "x"
a[1] = "y"
List = a
print ubound("List"); List[1]   # expect: 2y
