call s()
print "on"
end
sub s()
  len("abc") print "not reached"   # expect error 18: Unexpected operator
  5 print "not reached"            # expect error 18: Unexpected operator
  "text" print "not reached"       # expect error 18: Unexpected operator
  title print "not reached"        # expect error 18: Unexpected operator
  print "body"
endsub
