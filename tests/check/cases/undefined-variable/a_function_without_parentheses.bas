x = f  # problem: undefined-variable@5
end
function f()
  f = 1
endfunction
