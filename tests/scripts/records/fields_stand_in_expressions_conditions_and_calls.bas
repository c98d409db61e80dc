type Point
  x as integer
  y as double
endtype
dim p as Point
dim a[4]
p.x = 3
p.y = 1.5
a[p.x] = p.x * p.y + -p.x
print a[p.x]       # expect: 1.500000
if p.x > p.y then
  print "greater"  # expect: greater
endif
print max(p.x, 2)  # expect: 3.000000
n = 0
for i = p.y to p.x
  n = n + 1
next
print int(n)       # expect: 2
print twice(p.x)   # expect: 6.000000
end
function twice(n)
  twice = n * 2
  n = 0
endfunction
