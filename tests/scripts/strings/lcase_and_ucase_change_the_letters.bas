print ucase("abc Xyz 1!")   # expect: ABC XYZ 1!
print lcase("ABC xYZ 1!")   # expect: abc xyz 1!
print "["; ucase(""); "]"   # expect: []
