event create pressed other
dialog "Event", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "Pressed"
enddialog
# input: click 10
# input: ok
end
sub pressed(v)
  print "procedure"
endsub
sub other(v)
  print "event"
endsub
# expect: event
