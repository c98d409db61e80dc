dialog "Show", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 80, 14
  control button "b", 11, 5, 20, 80, 14, "change"
  oninit opened
enddialog
# input: click 11
# input: type 10 typed
# input: ok
print "after"
end
sub opened(r)
  alter 10
    show 0
    enable 0
  endalter
endsub
sub change(v)
  alter 10
    enable 1
    show 1
  endalter
  print controlvalue(10)
endsub
# expect: a
# expect: after
