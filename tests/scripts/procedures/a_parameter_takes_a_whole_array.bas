dim a[3]
a[0] = 1
a[1] = 2
a[2] = 3
print total(a)     # expect: 6.000000
print size(a)      # expect: 3
print size(a[1])   # expect: 1
end
function total(list)
  total = list[0] + list[1] + list[2]
endfunction
function size(list)
  size = ubound("list")
endfunction
