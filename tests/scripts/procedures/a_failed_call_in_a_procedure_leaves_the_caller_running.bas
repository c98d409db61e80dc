print outer()   # expect: 7.000000
print "main"    # expect: main
end
function outer()
  mine = 7
  call inner()
  outer = mine
endfunction
sub inner(a)    # expect error 24: Incorrect number of function parameters
endsub
