# answer: cancel
call s()
print "not reached"
end
sub s()
  x = nope()   # expect error 21: Undefined function name
  print "not reached"
endsub
