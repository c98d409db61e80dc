print seven()   # expect: 7.000000
call hello()    # expect: hello
print "on"      # expect: on
end
function seven()
  seven = 7
endsub
sub hello()
  print "hello"
endfunction
