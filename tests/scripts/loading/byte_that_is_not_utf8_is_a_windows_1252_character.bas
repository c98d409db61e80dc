print "é, €, ß"  # expect: Ã©, â‚¬, ÃŸ
