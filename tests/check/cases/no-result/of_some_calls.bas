print f(1)
end
function f(a)
  if a = 1 then
    f = "one"
  endif
endfunction
