function known()
  known = 1
endfunction
