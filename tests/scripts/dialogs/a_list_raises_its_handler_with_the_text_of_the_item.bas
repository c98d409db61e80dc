dialog "List", 0, 0, 120, 60
  control listbox "", 10, 5, 5, 80, 40, "selected"
  oninit opened
enddialog
# input: select 10 1
# input: select 10 0
# input: ok
end
sub opened(r)
  print "none: "; controlvalue(10); " "; controlvalue(10, "selection")
  alter 10
    value "north"
    value "south"
  endalter
endsub
sub selected(v)
  print v; " "; controlvalue(10); " "; controlvalue(10, "selection")
endsub
# expect: none:  -1
# expect: south south 1
# expect: north north 0
