a = "a"
x = a + 1
print x   # expect: a1.000000
x = 1 + "2"
print x   # expect: 3.000000
x = a + int(1)
print x   # expect: a1
x = 1 + "2 apples"
print x   # expect: 3.000000
