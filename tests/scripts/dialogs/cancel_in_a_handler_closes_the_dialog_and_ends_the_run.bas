dialog "Abort", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "fails"
  onexit closed
enddialog
# input: click 10
print "never"
end
sub fails(v)
  print "failing"
# answer: cancel
  next # expect error 55: Illegal NEXT statement.
  print "never"
endsub
sub closed(r)
  print "never"
endsub
# expect: failing
