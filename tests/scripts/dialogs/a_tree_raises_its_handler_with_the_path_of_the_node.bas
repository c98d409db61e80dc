dialog "Tree", 0, 0, 160, 90
  control treeview "", 10, 5, 5, 100, 60, "chosen"
  oninit opened
enddialog
# input: select 10 2
# input: select 10 0
# input: select 10 4
# input: ok
end
sub opened(r)
  alter 10
    value "world\europe\italy"
    value "world\asia"
    value "moon"
  endalter
  print "none: "; controlvalue(10); " "; controlvalue(10, "selection")
endsub
sub chosen(v)
  print v; " "; controlvalue(10); " "; controlvalue(10, "selection")
endsub
# expect: none:  -1
# expect: world\europe\italy world\europe\italy 2
# expect: world world 0
# expect: moon moon 4
