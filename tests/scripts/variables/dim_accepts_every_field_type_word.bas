dim a as integer, b as double, c as float, d as char, e as string
dim f[4] as string
a = "any kind of value"
print a             # expect: any kind of value
print ubound("f")   # expect: 4
