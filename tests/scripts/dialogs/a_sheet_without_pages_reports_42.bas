propertysheet "Empty"
enddialog
# expect error 42 anywhere: Dialog creating error
print "on"
# expect: on
