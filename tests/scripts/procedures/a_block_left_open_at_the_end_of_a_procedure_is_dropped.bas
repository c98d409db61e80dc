x = cut()
for i = 1 to 2
  x = cut()
next
print i; x   # expect: 3.0000001.000000
loop
print "on"   # expect: on
end
function cut()
  for k = 1 to 9
    cut = k
endfunction
