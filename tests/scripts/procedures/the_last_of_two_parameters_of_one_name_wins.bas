print pick(1, 2)   # expect: 2.000000
end
function pick(a, A)
  pick = a
endfunction
