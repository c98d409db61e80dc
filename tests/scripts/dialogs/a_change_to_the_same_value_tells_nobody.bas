# options: --ui=console --on-error=ask
dialog "D", 0, 0, 200, 200
  control listbox "", 11, 5, 5, 50, 10, "told"
  control combobox "", 13, 5, 5, 50, 10, "told"
  control datetime "", 14, 5, 5, 50, 10, "told"
  control tabcontrol "", 15, 5, 5, 50, 10, "told"
  control sliderhorz "", 12, 5, 5, 50, 10, "told"
  oninit opened
enddialog
# input: select 11 0
# input: set 12 0
# input: select 13 0
# input: set 14 2024-01-01 00:00:00
# input: select 15 0
# input: ok
print "closed"
end
sub opened(r)
  alter 11
    value "a"
    selection 0
  endalter
  alter 13
    value "a"
    selection 0
  endalter
  alter 14
    value "2024-01-01 00:00:00"
  endalter
  alter 15
    value "a"
  endalter
endsub
sub told(v)
  print "never"
endsub
# expect: closed
