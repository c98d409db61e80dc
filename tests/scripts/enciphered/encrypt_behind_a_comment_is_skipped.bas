# a plain script
encrypt 1,2,3 nothing of this counts
print "plain"  # expect: plain
