propertysheet "s"  # problem: missing-end-block@1
  page "p"
  endpage
