dialog  # problem: dialog-parameters@1
enddialog
