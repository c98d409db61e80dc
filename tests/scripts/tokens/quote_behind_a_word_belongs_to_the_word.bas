print"a"            # expect error 3: No expression present
print "b"           # expect: b
