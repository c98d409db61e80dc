dialog "Combo", 0, 0, 120, 60
  control combobox "", 10, 5, 5, 80, 40, "selected"
  oninit opened
enddialog
# input: select 10 2
# input: select 10 0
# input: ok
end
sub opened(r)
  print "none: "; controlvalue(10); " "; controlvalue(10, "selection")
  alter 10
    value "red"
    value "green"
    value "blue"
  endalter
endsub
sub selected(v)
  print v; " "; controlvalue(10); " "; controlvalue(10, "selection"); " "; controlvalue(10, "text")
endsub
# expect: none:  -1
# expect: blue blue 2 blue
# expect: red red 0 red
