# Recursion: the Fibonacci function called on itself, repeated.
n = 1000   # size
total = 0
for turn = 1 to n
  total = total + fib(20)
next
print format(total, "%.0f")
end

function fib(k)
  if k < 2 then
    fib = k
  else
    fib = fib(k - 1) + fib(k - 2)
  endif
endfunction
