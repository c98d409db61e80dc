dialog "d", nope, 0, 100, 50  # problem: undefined-variable@13
  control button "go", 3, 1, 1, 20, 10
enddialog
