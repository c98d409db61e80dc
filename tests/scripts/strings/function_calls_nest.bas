print left(right("abcdef", 4), 2)                              # expect: cd
print ucase(mid(repeat("ab", 3), instr("xyz", "y"), len("abc")))   # expect: BAB
print len(left("abc", len("ab")))                              # expect: 2
