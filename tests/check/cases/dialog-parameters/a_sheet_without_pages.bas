propertysheet "s"  # problem: dialog-parameters@1
enddialog
