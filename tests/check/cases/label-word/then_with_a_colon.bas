a = 1
if a = 1 then: print "1"  # problem: missing-then@10
endif
