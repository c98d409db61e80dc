print f(2)
end
function f(a)
  f = a
  return
endfunction
