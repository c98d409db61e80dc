print left(right("abcdef", 4), len("ab"))  # expect: cd
print len("ab") + len("cde")  # expect: 5.000000
