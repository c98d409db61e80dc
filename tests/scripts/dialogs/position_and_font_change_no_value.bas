dialog "Place", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 80, 14
  oninit opened
enddialog
# input: type 10 b
# input: ok
end
sub opened(r)
  alter 10
    position 10, 30, 60, 20
    font 12, "Sans"
  endalter
  alter window
    position 0, 0, 200, 150
    font 10, "Sans"
  endalter
  print controlvalue(10)
endsub
# expect: a
