print LEN("abc")       # expect: 3
print Left("abc", 1)   # expect: a
print uCase("a")       # expect: A
