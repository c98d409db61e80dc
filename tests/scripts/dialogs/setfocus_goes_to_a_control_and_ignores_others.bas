dialog "Focus", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 50, 14
  control edittext "b", 11, 5, 20, 50, 14
  oninit opened
enddialog
# input: type 10 c
# input: ok
setfocus 10
print "after"
end
sub opened(r)
  setfocus 11
  setfocus 99
  print "set"
endsub
# expect: set
# expect: after
