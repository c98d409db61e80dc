dialog "Font", 0, 0, 120, 60, 12, "Sans"
  control button "a", 10, 5, 5, 50, 14, "pressed"
enddialog
# input: click 10
# input: ok
dialog "No font", 0, 0, 120, 60, 12
  control button "a", 10, 5, 5, 50, 14, "pressed"
enddialog
# input: click 10
# input: ok
dialog "Strange font", 0, 0, 120, 60, 0, ""
  control button "a", 10, 5, 5, 50, 14, "pressed"
enddialog
# input: click 10
# input: ok
end
sub pressed(v)
  print "pressed"
endsub
# expect: pressed
# expect: pressed
# expect: pressed
