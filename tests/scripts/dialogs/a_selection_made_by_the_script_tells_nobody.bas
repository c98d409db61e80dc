dialog "Quiet", 0, 0, 120, 140
  control listbox "", 10, 5, 5, 80, 40, "told"
  control combobox "", 11, 5, 50, 80, 40, "told"
  control edittext "", 12, 5, 70, 80, 14, "told"
  control checkbox "", 13, 5, 90, 80, 14, "told"
  control sliderhorz "", 14, 5, 105, 80, 14, "told"
  control datetime "", 15, 5, 120, 80, 14, "told"
  control treeview "", 16, 90, 5, 80, 40, "told"
  control tabcontrol "", 17, 90, 50, 80, 40, "told"
  control multilistbox "", 18, 90, 90, 80, 40, "told"
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  alter 10
    value "a"
    selection 0
  endalter
  alter 11
    value "a"
    text "a"
  endalter
  alter 12
    text "typed"
    clear
    value "again"
    title "and again"
  endalter
  alter 13
    value 1
  endalter
  alter 14
    value 50
  endalter
  alter 15
    value "2024-01-02 03:04:05"
  endalter
  alter 16
    value "a\b"
    clear
  endalter
  alter 17
    value "a"
    value "b"
    selection 1
  endalter
  alter 18
    value "a"
    selection 0
    clear
  endalter
  print "filled"
endsub
sub told(v)
  print "told "; v
endsub
# expect: filled
# expect: after
