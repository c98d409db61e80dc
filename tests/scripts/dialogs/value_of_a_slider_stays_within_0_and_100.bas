dialog "Slider", 0, 0, 120, 90
  control sliderhorz "", 10, 5, 5, 80, 14
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value 33.9
  endalter
  print controlvalue(10)
  alter 10
    value 101
  endalter
  print controlvalue(10)
  alter 10
    value -5
  endalter
  print controlvalue(10)
endsub
# expect: 33
# expect: 100
# expect: 0
