print even(10); odd(7); even(7)   # expect: 110
end
function even(n)
  if n = 0 then
    even = int(1)
  else
    even = odd(n - 1)
  endif
endfunction
function odd(n)
  if n = 0 then
    odd = int(0)
  else
    odd = even(n - 1)
  endif
endfunction
