function twice(n)
  twice = n * 2
endfunction
