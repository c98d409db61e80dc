dim a[2]
a[1] = 5
print add(a[1] * 2, (1 + 2) * -1)   # expect: 7.000000
print add("a" + "b", "c")           # expect: abc
end
function add(a, b)
  add = a + b
endfunction
