x = Nothing
print val("")       # expect: 0.000000
print val(x)        # expect: 0.000000
print int(x)        # expect: 0
print "["; x; "]"   # expect: []
