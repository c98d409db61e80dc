print format(1, "plain")        # expect: plain
print format(1, "100%%")        # expect: 100%
print format(1, "%d%%")         # expect: 1%
print "["; format(1, ""); "]"   # expect: []
