dialog "Marks", 0, 0, 120, 90
  control checkbox "a", 10, 5, 5, 80, 14
  control radiogroup "b", 11, 5, 20, 80, 14
  control radiogroup "c", 12, 5, 35, 80, 14
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value 1
  endalter
  alter 11
    value 1
  endalter
  print controlvalue(10); controlvalue(11); controlvalue(12)
  alter 10
    value 0
  endalter
  alter 12
    value 1
  endalter
  print controlvalue(10); controlvalue(11); controlvalue(12)
endsub
# expect: 110
# expect: 001
