# options: --ui=console --on-error=ask
# exit: 0
propertysheet "Sheet"
  page "General"
    control edittext "a", 10, 5, 5, 50, 10
  endpage
  page "Nothing here"
  endpage
  page "More"
    control checkbox "b", 20, 5, 5, 50, 10
  endpage
enddialog
print "closed"
# expect: closed
