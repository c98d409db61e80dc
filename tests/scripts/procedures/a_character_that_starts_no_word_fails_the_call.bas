call s()
print "on"
end
sub s()
  _   # expect error 18: Unexpected operator
  print "not reached"
endsub
