dialog "Fit", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  alter 10
    clear
# expect error 45: Incorrect parameter
    title "never"
  endalter
  print controlvalue(10)
endsub
# expect: a
# expect: after
