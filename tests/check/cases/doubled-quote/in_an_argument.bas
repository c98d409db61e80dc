print len("a""b")  # problem: doubled-quote@14
