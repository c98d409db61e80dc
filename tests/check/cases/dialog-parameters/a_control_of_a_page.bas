propertysheet "s"
  page "p"
    control button "go", 3  # problem: dialog-parameters@13
  endpage
enddialog
