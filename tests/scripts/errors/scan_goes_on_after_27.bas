print g()           # expect: 3.000000
end
sub f()
endsub
sub f()             # expect error 27: Duplicate function definition
endsub
function g()
  g = 3
endfunction
