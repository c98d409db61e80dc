# Deliberate: the sign sits below "^".
print -2^2          # expect: 4.000000
print 0-2^2         # expect: -4.000000
