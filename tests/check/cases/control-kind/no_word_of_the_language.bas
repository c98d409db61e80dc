dialog "d", 0, 0, 100, 50
  control label "w", 3, 1, 1, 20, 10  # problem: control-kind@11
enddialog
