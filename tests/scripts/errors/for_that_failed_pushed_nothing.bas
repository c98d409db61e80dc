for i = 1           # expect error 10: Expected: TO
print i             # expect: 1.000000
next                # expect error 55: Illegal NEXT statement.
