dialog "Kinds", 0, 0, 120, 90
  control gadget "a", 10, 5, 5, 80, 14
# expect error 1 anywhere: Syntax error
enddialog
print "on"
# expect: on
