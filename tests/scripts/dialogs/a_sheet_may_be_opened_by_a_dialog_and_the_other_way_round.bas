dialog "Dialog", 0, 0, 100, 60
  control button "Sheet", 10, 5, 5, 50, 10, "sheet"
enddialog
# input: click 10
# input: click 20
# input: click 30
# input: ok
# input: cancel
# input: ok
print "after"
end
sub sheet(v)
  propertysheet "Sheet"
    page "One"
      control edittext "one", 11, 5, 5, 50, 10
    endpage
    page "Two"
      control button "Dialog", 20, 5, 5, 50, 10, "inner"
      onexit closed
    endpage
  enddialog
endsub
sub inner(v)
  dialog "Inner", 0, 0, 100, 60
    control button "Look", 30, 5, 5, 50, 10, "look"
    onexit closed
  enddialog
  print controlvalue(11)
endsub
sub look(v)
  print getwindowhandle(11); controlvalue(30)
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: 0Look
# expect: closed 1
# expect: one
# expect: closed 2
# expect: after
