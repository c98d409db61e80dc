propertysheet nope  # problem: unset-read@15
  page nope  # problem: unset-read@8
  endpage
enddialog
