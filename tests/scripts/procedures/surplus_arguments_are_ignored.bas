print same(1, 2, 3)   # expect: 1.000000
print none(1)         # expect: none
end
function same(x)
  same = x
endfunction
function none()
  none = "none"
endfunction
