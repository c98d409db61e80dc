event create alarm ring
throw alarm()  # expect: rings
end
sub ring()
  print "rings"
endsub
