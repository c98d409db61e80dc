dialog "d", 0, 0, 100, 50
  control button "go", 3, 1, 1, 20, 10
enddialog
print controlvalue(3, "caption")  # problem: value-kind@23
