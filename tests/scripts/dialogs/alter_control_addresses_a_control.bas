dialog "Words", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 50, 14
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter control 5 + 5
    text "b"
  endalter
  print controlvalue(10)
endsub
# expect: b
