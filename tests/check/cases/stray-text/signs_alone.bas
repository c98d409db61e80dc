print "a"
; ,  # problem: stray-text@1
