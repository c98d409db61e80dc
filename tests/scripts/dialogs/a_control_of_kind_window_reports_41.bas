dialog "Kinds", 0, 0, 120, 90
  control window "a", 10, 5, 5, 80, 14
# expect error 41 anywhere: Unsupported dialog control name.
  control button "a", 10, 5, 5, 80, 14
enddialog
print "on"
# expect: on
