a = 1
dim b[5]
s = getvarstats()
print s[0]          # expect: 2
print ubound("s")   # expect: 2
s = getvarstats()
print s[0]          # expect: 3
global G
s = getvarstats()
print s[0]          # expect: 4
