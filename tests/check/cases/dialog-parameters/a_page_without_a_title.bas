propertysheet "s"
  page  # problem: dialog-parameters@3
  endpage
enddialog
