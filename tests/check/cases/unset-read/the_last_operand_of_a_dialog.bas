dialog "d", 0, 0, 100, nope  # problem: unset-read@24
  control button "go", 3, 1, 1, 20, nope  # problem: unset-read@37
enddialog
