dialog "d", 0, 0, 100, 50
  control  # problem: control-kind@3
enddialog
