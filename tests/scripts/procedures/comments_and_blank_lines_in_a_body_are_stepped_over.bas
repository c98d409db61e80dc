print f(1)      # expect: 2.000000
end
function f(x)   # a comment on the head line

  # a comment on a line of its own
  rem another one: endfunction

  f = x + 1     # and one behind a statement
endfunction     # the end
