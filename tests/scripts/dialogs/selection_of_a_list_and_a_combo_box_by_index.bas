dialog "Lists", 0, 0, 120, 90
  control listbox "", 10, 5, 5, 80, 40
  control combobox "", 11, 5, 50, 80, 40
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    value "b"
    selection 1
  endalter
  alter 11
    value "c"
    value "d"
    selection 0
  endalter
  print controlvalue(10); controlvalue(10, "selection"); controlvalue(11); controlvalue(11, "selection")
  alter 10
    selection -1
  endalter
  alter 11
    selection -1
  endalter
  print controlvalue(10); controlvalue(10, "selection"); controlvalue(11); controlvalue(11, "selection")
endsub
# expect: b1c0
# expect: -1-1
