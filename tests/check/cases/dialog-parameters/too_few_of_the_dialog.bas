dialog "d", 0, 0  # problem: dialog-parameters@1
enddialog
