dialog "Before", 0, 0, 120, 120
  control button "a", 10, 5, 5, 80, 14
  control checkbox "b", 11, 5, 20, 80, 14
  control radiogroup "c", 12, 5, 35, 80, 14
  control groupbox "d", 13, 5, 50, 80, 14
  control statictext "e", 14, 5, 65, 80, 14
  control edittext "f", 15, 5, 80, 80, 14
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  for id = 10 to 15
    alter id
      title "new " + str(int(id))
    endalter
    print controlvalue(id, "text")
  next
  alter window
    title "After"
  endalter
  print copydata("Before", 1, ""); copydata("After", 1, "")
endsub
# expect: new 10
# expect: new 11
# expect: new 12
# expect: new 13
# expect: new 14
# expect: new 15
# expect: 01
