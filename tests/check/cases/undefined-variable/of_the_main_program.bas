total = 1
print add(2)
end
function add(n)
  add = total + n  # problem: undefined-variable@9
endfunction
