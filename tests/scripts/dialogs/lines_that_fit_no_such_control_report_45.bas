dialog "Fit", 0, 0, 300, 300
  control checkbox "check", 10, 5, 5, 50, 10
  control treeview "tree", 11, 5, 20, 50, 30
  control sliderhorz "slider", 12, 5, 55, 50, 10
  control statictext "static", 13, 5, 70, 50, 10
  control tabcontrol "tab", 14, 5, 85, 50, 30
  control datetime "", 15, 5, 120, 80, 10
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  alter 10
    text "x"
# expect error 45: Incorrect parameter
  endalter
  alter 11
    selection 0
# expect error 45: Incorrect parameter
  endalter
  alter 12
    clear
# expect error 45: Incorrect parameter
  endalter
  alter 13
    value "x"
# expect error 45: Incorrect parameter
  endalter
  alter 14
    text "x"
# expect error 45: Incorrect parameter
  endalter
  alter 15
    clear
# expect error 45: Incorrect parameter
  endalter
  alter window
    value 1
# expect error 45: Incorrect parameter
  endalter
  alter window
    goto nowhere
# expect error 45 anywhere: Incorrect parameter
  endalter
  print controlvalue(10); controlvalue(13)
endsub
# expect: 0static
# expect: after
