dialog "Clear", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 80, 14
  control listbox "", 11, 5, 20, 80, 30
  control combobox "", 12, 5, 55, 80, 30
  control treeview "", 13, 90, 5, 80, 60
  oninit opened
enddialog
# input: select 11 0
# input: ok
end
sub opened(r)
  alter 10
    clear
  endalter
  for id = 11 to 12
    alter id
      value "x"
      selection 0
      clear
    endalter
    print "["; controlvalue(id); controlvalue(id, "selection"); "]"
  next
  alter 13
    value "x\y"
    clear
    value "z"
  endalter
  alter 11
    value "last"
  endalter
  print "["; controlvalue(10); controlvalue(13, "selection"); "]"
endsub
# expect: [-1]
# expect: [-1]
# expect: [-1]
