dialog "Sizes", -30000, 40000, 0, -5
  control button "a", 10, 0, 0, 0, 0, "pressed"
  control edittext "b", 11, -100, -100, -10, -10
  control listbox "c", 12, 32767, 32767, 32767, 32767
  control button "d", 13, 100000, 100000, 100000, 100000, "pressed"
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  alter 10
    position -5, -5, -5, -5
    font -3, ""
    position 0, 0, 100000, 100000
    font 9999, "no such face"
    font 0, "no such face"
  endalter
  print controlvalue(11)
endsub
# expect: b
# expect: after
