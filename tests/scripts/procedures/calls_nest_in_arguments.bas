print add(add(1, 2), add(add(3, 4), 5))   # expect: 15.000000
print max(add(1, 1), len("abc"))          # expect: 3.000000
end
function add(a, b)
  add = a + b
endfunction
