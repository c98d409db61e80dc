print "a""b"  # problem: doubled-quote@10
