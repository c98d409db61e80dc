dialog "d", 0, 0, 100, 50
enddialog
alter nope  # problem: undefined-variable@7
  title "t"
endalter
