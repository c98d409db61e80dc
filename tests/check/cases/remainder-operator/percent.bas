print 7 % 2  # problem: remainder-operator@9
