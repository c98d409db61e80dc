print f()
end
function F()
  f = "first"
endfunction
function f()   # expect error 27: Duplicate function definition
  f = "second"
endfunction
