dialog "Built in", 0, 0, 100, 60
  control edittext "", 10, 5, 5, 50, 14, "len"
enddialog
# input: type 10 abc
# input: ok
print "after"
# expect: after
