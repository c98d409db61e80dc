propertysheet "Sheet"
  page "One"
    control button "b", 20, 5, 5, 80, 14, "leave"
    onexit closed
  endpage
enddialog
# input: click 20
end
sub leave(v)
  closedialog
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: closed 1
