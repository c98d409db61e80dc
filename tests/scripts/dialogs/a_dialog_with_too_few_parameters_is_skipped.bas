dialog "Few", 0, 0, 120
# expect error 1 anywhere: Syntax error
  control button "a", 10, 5, 5, 80, 14
enddialog
print "on"
# expect: on
