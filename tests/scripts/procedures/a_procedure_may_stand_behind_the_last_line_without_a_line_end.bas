print f()   # expect: 1.000000
end
function f()
  f = 1
endfunction
