dialog "Picture", 0, 0, 120, 90
  control bitmap "no such file.bmp", 10, 5, 5, 50, 50
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  print controlvalue(10, "text")
endsub
# expect: no such file.bmp
