print f()
end
sub f()
  f = "first"
endsub
function f()   # expect error 27: Duplicate function definition
  f = "second"
endfunction
