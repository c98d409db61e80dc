dialog "Tabs", 0, 0, 120, 90
  control tabcontrol "", 10, 5, 5, 80, 40
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    value "b"
    value "c"
    selection 2
  endalter
  print controlvalue(10)
  alter 10
    clear
  endalter
  print controlvalue(10)
endsub
# expect: 2
# expect: -1
