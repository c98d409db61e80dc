dialog "Tabs", 0, 0, 160, 90
  control tabcontrol "", 10, 5, 5, 100, 60, "turned"
  oninit opened
enddialog
# input: select 10 1
# input: select 10 0
# input: ok
end
sub opened(r)
  print controlvalue(10)
  alter 10
    value "general"
    value "details"
  endalter
  print controlvalue(10)
endsub
sub turned(v)
  print v; " "; controlvalue(10); " "; controlvalue(10, "selection")
endsub
# expect: -1
# expect: 0
# expect: 1 1 1
# expect: 0 0 0
