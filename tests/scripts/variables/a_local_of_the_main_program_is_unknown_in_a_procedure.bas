secret = 5
print ubound("secret")   # expect: 1
print reveal()           # expect: 0
end
function reveal()
  reveal = ubound("secret")
endfunction
