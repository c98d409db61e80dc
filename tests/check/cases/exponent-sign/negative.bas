print 1e-3  # problem: exponent-sign@7
