print first(1, 2, 3)  # expect: 1.000000
end
function first(a)
  first = a
endfunction
