dialog "Tabs", 0, 0, 160, 90
  control tabcontrol "", 10, 5, 5, 100, 60, "turned"
  oninit opened
enddialog
# input: select 10 0
# input: select 10 2
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    value "b"
    selection -1
    value "c"
  endalter
  print controlvalue(10)
endsub
sub turned(v)
  print v; controlvalue(10)
endsub
# expect: -1
# expect: 00
# expect: 22
