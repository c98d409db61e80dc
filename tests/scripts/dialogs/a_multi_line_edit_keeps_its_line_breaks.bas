dialog "Notes", 0, 0, 160, 90
  control editmultiline "", 10, 5, 5, 100, 50
  control button "Read", 11, 5, 65, 50, 14, "show"
  oninit opened
enddialog
# input: click 11
# input: type 10 one line
# input: click 11
# input: ok
end
sub opened(r)
  alter 10
    text "first
second"
  endalter
endsub
sub show(v)
  print controlvalue(10)
endsub
# expect: first
# expect: second
# expect: one line
