print val("   7")                     # expect: 7.000000
print val(format(9, "%c") + "8")      # expect: 8.000000
print val(format(10, "%c") + "9")     # expect: 9.000000
print val(format(13, "%c") + " -1")   # expect: -1.000000
