dialog nope, 0, 0, 100, 50  # problem: undefined-variable@8
enddialog
