call hello   # expect error 1: Syntax error
print "on"
end
sub hello()
  print "not reached"
endsub
