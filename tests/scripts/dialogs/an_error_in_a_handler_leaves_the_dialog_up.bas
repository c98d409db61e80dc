dialog "Errors", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "fails"
  control button "b", 11, 5, 20, 80, 14, "works"
enddialog
# input: click 10
print "after"
end
sub fails(v)
  next # expect error 55: Illegal NEXT statement.
  print "on"
endsub
# input: click 11
# input: ok
sub works(v)
  print "works"
endsub
# expect: on
# expect: works
# expect: after
