dialog "Kinds", 0, 0, 300, 300
  control button "button", 10, 5, 5, 50, 10
  control edittext "edit", 11, 5, 20, 50, 10
  control checkbox "check", 12, 5, 35, 50, 10
  control listbox "list", 13, 5, 50, 50, 30
  control statictext "static", 14, 5, 85, 50, 10
  control groupbox "group", 15, 5, 100, 50, 30
  control multilistbox "multi", 16, 5, 135, 50, 30
  control editmultiline "lines", 17, 5, 170, 50, 30
  control combobox "combo", 18, 5, 205, 50, 30
  control editnumber "12", 19, 5, 240, 50, 10
  control radiogroup "radio", 20, 5, 255, 50, 10
  control treeview "tree", 21, 100, 5, 50, 30
  control sliderhorz "slider", 22, 100, 40, 50, 10
  control slidervert "slider", 23, 100, 55, 10, 50
  control tabcontrol "tab", 24, 100, 110, 50, 50
  control okbutton "ok", 25, 100, 170, 50, 10
  control cancelbutton "cancel", 26, 100, 185, 50, 10
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  for id = 10 to 24
    print int(id); " "; controlvalue(id)
  next
  print "1 "; controlvalue(1)
  print "2 "; controlvalue(2)
endsub
# expect: 10 button
# expect: 11 edit
# expect: 12 0
# expect: 13 
# expect: 14 static
# expect: 15 group
# expect: 16 
# expect: 17 lines
# expect: 18 
# expect: 19 12
# expect: 20 0
# expect: 21 
# expect: 22 0
# expect: 23 0
# expect: 24 -1
# expect: 1 ok
# expect: 2 cancel
