propertysheet "Sheet"
  page "One"
    control edittext "a", 10, 5, 5, 80, 14
  endpage
  page "Two"
    control button "b", 20, 5, 5, 80, 14, "pressed"
  endpage
enddialog
# input: click 20
# input: cancel
print "after"
end
sub pressed(v)
  print controlvalue(10); controlvalue(20)
endsub
# expect: ab
# expect: after
