declare function nettle_version_major lib "nettle" (a as char, b as integer, c as double, d as string, byval e as char)
a = 300.5
b = 2.75
c = 0.1
d = 7
e = 300.5
call nettle_version_major(a, b, c, d, e)
print a ; " " ; b ; " " ; format(c, "%.9f") ; " " ; d ; " " ; e  # expect: 44 2 0.100000001 7.000000 300.500000
