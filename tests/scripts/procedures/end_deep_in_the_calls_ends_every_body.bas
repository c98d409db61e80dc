call outer()
print "not reached"
end
sub outer()
  call inner()
  print "not reached"
endsub
sub inner()
  end
  print "not reached"
endsub
