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
    text "b"
  endalter
  alter 11
    value "c"
    value "d"
    text "d"
  endalter
  print controlvalue(10); controlvalue(10, "selection"); controlvalue(11); controlvalue(11, "selection")
endsub
# expect: b1d1
