dialog "Number", 0, 0, 120, 60
  control editnumber "5", 10, 5, 5, 80, 14
  control button "Read", 11, 5, 25, 50, 14, "show"
enddialog
# input: click 11
# input: type 10 007
# input: click 11
# input: type 10
# input: click 11
# input: ok
end
sub show(v)
  print controlvalue(10); " "; controlvalue(10, "text")
endsub
# expect: 5 5
# expect: 7 007
# expect: 0 
