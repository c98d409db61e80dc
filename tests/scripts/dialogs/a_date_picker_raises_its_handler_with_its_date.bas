dialog "Date", 0, 0, 160, 90
  control datetime "", 10, 5, 5, 100, 14, "picked"
  oninit opened
enddialog
# input: set 10 2024-02-29 23:59:58
# input: ok
end
sub opened(r)
  print len(controlvalue(10))
  alter 10
    value "2001-09-08 07:06:05"
  endalter
  print controlvalue(10)
endsub
sub picked(v)
  print v; " "; controlvalue(10)
endsub
# expect: 19
# expect: 2001-09-08 07:06:05
# expect: 2024-02-29 23:59:58 2024-02-29 23:59:58
