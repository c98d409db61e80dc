dialog "", 0, 0, 0, 0
enddialog
# input: ok
print "after"
# expect: after
