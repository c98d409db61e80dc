print MyFunc(1)   # expect: 2.000000
print MYFUNC(1)   # expect: 2.000000
call MYSUB()      # expect: sub
end
function myFunc(x)
  MYFUNC = x + 1
endfunction
sub mySub()
  print "sub"
endsub
