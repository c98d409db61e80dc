dialog "d", 0, 0, 100, 50
  control button "go", 3  # problem: dialog-parameters@11
enddialog
