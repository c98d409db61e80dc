print replace("abc", "", "x")   # expect: abc
