n = 0
for a = 1 to 2 for b = 1 to 2 for c = 1 to 2 for d = 1 to 2 for e = 1 to 2
for f = 1 to 2 for g = 1 to 2 for h = 1 to 2 for i = 1 to 2 for j = 1 to 2
n = n + 1
next next next next next next next next next next
print n             # expect: 1024.000000
