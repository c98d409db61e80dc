dialog "Buttons", 0, 0, 120, 60
  control button "Press", 10, 5, 5, 50, 14, "pressed"
enddialog
# input: click 10
# input: click 10
# input: cancel
print "closed"
end
sub pressed(v)
  print "pressed "; v
endsub
# expect: pressed 0
# expect: pressed 0
# expect: closed
