print f(Nothing)   # expect: 0
x = Nothing
print f(x)         # expect: 0
end
function f(p)
  f = ubound("p")
endfunction
