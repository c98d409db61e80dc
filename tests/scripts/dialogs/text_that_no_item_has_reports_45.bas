dialog "List", 0, 0, 120, 90
  control listbox "", 10, 5, 5, 80, 40
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    text "A"
    # expect error 45: Incorrect parameter
    value "b"
  endalter
  print controlvalue(10, "selection")
endsub
# expect: -1
