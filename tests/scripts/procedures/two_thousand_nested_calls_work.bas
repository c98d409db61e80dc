print depth(2000)   # expect: 2000.000000
end
function depth(n)
  if n < 2 then
    depth = 1
  else
    depth = 1 + depth(n - 1)
  endif
endfunction
