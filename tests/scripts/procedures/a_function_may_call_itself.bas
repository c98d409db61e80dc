print fact(10)   # expect: 3628800.000000
print fib(15)    # expect: 610.000000
end
function fact(n)
  if n < 2 then
    fact = 1
    return
  endif
  fact = n * fact(n - 1)
endfunction
function fib(n)
  if n < 2 then
    fib = n
  else
    fib = fib(n - 1) + fib(n - 2)
  endif
endfunction
