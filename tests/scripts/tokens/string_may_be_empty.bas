print ""            # expect:
print len("")       # expect: 0
