function twice(n)
twice = 2 * n
endfunction
