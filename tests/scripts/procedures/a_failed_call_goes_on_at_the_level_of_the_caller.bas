kept = 1
x = both(1)
print kept                  # expect: 1.000000
s = both(2, 3)
print s                     # expect: 5.000000
print garbagecollection()   # expect: 3
end
function both(a, b)         # expect error 24: Incorrect number of function parameters
  both = a + b
endfunction
