dialog "Sliders", 0, 0, 160, 90
  control sliderhorz "", 10, 5, 5, 100, 14, "moved"
  control slidervert "", 11, 120, 5, 14, 60, "moved"
  oninit opened
enddialog
# input: set 10 40
# input: set 11 100
# input: set 10 0
# input: ok
end
sub opened(r)
  print controlvalue(10); " "; controlvalue(11)
endsub
sub moved(v)
  print v; ": "; controlvalue(10); " "; controlvalue(11)
endsub
# expect: 0 0
# expect: 40: 40 0
# expect: 100: 40 100
# expect: 0: 0 100
