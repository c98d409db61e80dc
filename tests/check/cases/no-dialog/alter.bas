alter 3  # problem: no-dialog@1
  title "x"
endalter
