type Measure
  f as float
endtype
dim m as Measure
m.f = 1e300
print m.f  # expect: inf
m.f = -1e300
print m.f  # expect: -inf
m.f = 0 / 0
if isnan(m.f) != 0 then
  print "not a number"  # expect: not a number
endif
