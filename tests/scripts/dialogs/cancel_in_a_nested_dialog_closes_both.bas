dialog "Outer", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "more"
  onexit closed
enddialog
# input: click 10
# input: click 11
print "never"
end
sub more(v)
  dialog "Inner", 0, 0, 120, 90
    control button "b", 11, 5, 5, 80, 14, "fails"
    onexit closed
  enddialog
  print "never"
endsub
sub fails(v)
# answer: cancel
  next # expect error 55: Illegal NEXT statement.
endsub
sub closed(r)
  print "never"
endsub
