dialog "Twice", 0, 0, 120, 60
  control okbutton "First", 70, 5, 5, 50, 14, "first"
  control okbutton "Second", 71, 60, 5, 50, 14, "other"
  oninit opened
enddialog
# input: click 1
end
sub opened(r)
  print controlvalue(1)
endsub
sub first(v)
  print "first"
endsub
sub other(v)
  print "second button"
endsub
# expect: First
# expect: second button
