print seven()   # expect: 7.000000
call hello()    # expect: hello
call hello( )   # expect: hello
end
function seven()
  seven = 7
endfunction
sub hello()
  print "hello"
endsub
