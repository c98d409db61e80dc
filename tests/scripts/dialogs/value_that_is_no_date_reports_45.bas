dialog "Date", 0, 0, 120, 90
  control datetime "", 10, 5, 5, 80, 14
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value "2024-01-02 03:04:05"
  endalter
  alter 10
    value "2023-02-29 00:00:00"
    # expect error 45: Incorrect parameter
  endalter
  print controlvalue(10)
endsub
# expect: 2024-01-02 03:04:05
