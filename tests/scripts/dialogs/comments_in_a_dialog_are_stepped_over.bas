dialog "Comments", 0, 0, 120, 90 # control window
  # control window "x", 1, 1, 1, 1, 1
  rem enddialog
  control button "a", 10, 5, 5, 80, 14 # , "pressed"
  control button "b", 11, 5, 20, 80, 14, "pressed" # a handler
  oninit opened # comment
enddialog # comment
# input: click 10
# input: click 11
# input: ok
end
sub opened(r)
  alter 11 # comment
    # title "never"
    rem endalter
    title "c" # comment
  endalter # comment
endsub
sub pressed(v)
  print controlvalue(11)
endsub
# expect: c
