s = getvarstats()
print s[0]   # expect: 0
