dim a[3]
a[two()] = "third"
print a[two()]    # expect: third
if two() = 2 then
  print "equal"   # expect: equal
endif
n = 0
for i = two() to two() + two()
  n = n + 1
next
print n           # expect: 3.000000
do while n > two()
  n = n - 1
loop
print n           # expect: 2.000000
end
function two()
  two = 2
endfunction
