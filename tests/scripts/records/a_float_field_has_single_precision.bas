type Measure
  f as float
endtype
dim m as Measure
m.f = 16777217
print m.f  # expect: 16777216.000000
m.f = 0.5
print m.f  # expect: 0.500000
m.f = 123456.789
print m.f  # expect: 123456.789062
