print count(3)   # expect: 3.000000
end
function count(n)
  i = 0
again:
  i = i + 1
  if i < n then
    goto again
  endif
  count = i
endfunction
