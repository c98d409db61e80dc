print "first

third"              # expect: first
# expect:
# expect: third
