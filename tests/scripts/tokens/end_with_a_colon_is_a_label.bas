print "a"           # expect: a
end: print "b"      # expect: b
