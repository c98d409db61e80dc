print outer(1, 2)   # expect: 1 2 30
end
function outer(a, b)
  x = inner(int(10), int(20))
  outer = str(int(a)) + " "
  outer = outer + str(int(b)) + " "
  outer = outer + str(x)
endfunction
function inner(a, b)
  inner = int(a + b)
  a = 99
  b = 99
endfunction
