function answer()
  answer = 42
endfunction
