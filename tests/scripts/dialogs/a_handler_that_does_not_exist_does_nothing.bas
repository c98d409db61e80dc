dialog "None", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "nowhere"
  oninit nowhere
  onexit "nowhere at all"
enddialog
# input: click 10
# input: ok
print "after"
# expect: after
