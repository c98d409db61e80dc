x = 1
global x[3]
print ubound("x")   # expect: 3
print x[0]          # expect: 1.000000
print reveal()      # expect: 0
end
function reveal()
  reveal = ubound("x")
endfunction
