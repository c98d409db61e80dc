print "漢", "x"      # expect: 漢       x
print "😀", "x"      # expect: 😀      x
