if 1 = 2 then
  dialog "Never", 0, 0, 100, 60
    control button "if for do", 10, 5, 5, 50, 14
  enddialog
else
  print "other"
endif
# expect: other
