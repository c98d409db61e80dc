propertysheet  # problem: dialog-parameters@1
  page "p"
  endpage
enddialog
