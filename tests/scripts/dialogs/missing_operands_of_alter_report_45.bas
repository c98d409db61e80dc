dialog "Operands", 0, 0, 100, 60
  control edittext "edit", 10, 5, 5, 50, 10
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  alter 10
    position 1, 2, 3
# expect error 45 anywhere: Incorrect parameter
  endalter
  alter 10
    font 9
# expect error 45 anywhere: Incorrect parameter
  endalter
  alter 10
    menuitem "entry"
# expect error 45 anywhere: Incorrect parameter
  endalter
  alter 10
    show
# expect error 45 anywhere: Incorrect parameter
  endalter
  print controlvalue(10)
endsub
# expect: edit
# expect: after
