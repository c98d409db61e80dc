dialog "d", 0, 0, 100, 50  # problem: missing-end-block@1
  control button "go", 3, 1, 1, 20, 10
