dialog "Kinds", 0, 0, 300, 300
  control button "button", 10, 5, 5, 50, 10
  control edittext "edit", 11, 5, 20, 50, 10
  control checkbox "check", 12, 5, 35, 50, 10
  control listbox "list", 13, 5, 50, 50, 30
  control combobox "combo", 14, 5, 85, 50, 30
  control treeview "tree", 15, 100, 5, 50, 30
  control tabcontrol "tab", 16, 100, 110, 50, 50
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  for id = 10 to 16
    print controlvalue(id, "selection"); " ";
  next
  print "."
endsub
# expect: -1 -1 -1 -1 -1 -1 -1 .
