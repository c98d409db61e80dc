print sum(4)   # expect: 10.000000
end
function sum(n)
  sum = 0
  for i = 1 to n
    sum = sum + i
  next
endfunction
