dialog "d", 0, 0, 100, 50
  oninit  # problem: word-syntax@3
enddialog
