print "ab", "c"     # expect: ab      c
print "abcdefg", "x"  # expect: abcdefg x
print "a", "b", "c"  # expect: a       b       c
