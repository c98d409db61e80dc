propertysheet "s"
  nothing
  page "p"
    control button nope, 3, 1, 1, 20, 10  # problem: undefined-variable@20
  endpage
enddialog
