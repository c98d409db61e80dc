x = 1
y = shadow()
print x; " "; y   # expect: 1.000000 2.000000
end
function shadow()
  x = 2
  shadow = x
endfunction
