dialog "Radio", 0, 0, 160, 120
  control groupbox "Size", 20, 5, 5, 60, 50
  control radiogroup "small", 10, 8, 15, 50, 10, "chosen"
  control radiogroup "large", 11, 8, 30, 50, 10, "chosen"
  control groupbox "Colour", 21, 70, 5, 60, 50
  control radiogroup "red", 12, 75, 15, 50, 10, "chosen"
  control radiogroup "blue", 13, 75, 30, 50, 10, "chosen"
enddialog
# input: click 10
# input: click 13
# input: click 11
# input: click 11
# input: click 12
# input: ok
end
sub chosen(v)
  print v; ": "; controlvalue(10); controlvalue(11); " "; controlvalue(12); controlvalue(13)
endsub
# expect: 1: 10 00
# expect: 1: 10 01
# expect: 1: 01 01
# expect: 1: 01 01
# expect: 1: 01 10
