call halt()
print "not reached"
end
sub halt()
  print "halting"
  stop
  print "not reached"
endsub
