dialog "None", 0, 0, 100, 60
  control button "a", 10, 5, 5, 50, 14, "pressed"
enddialog
# input: click 10
# input: ok
end
sub pressed()
  print "pressed"
endsub
# expect: pressed
