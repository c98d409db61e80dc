print "a"           # expect: a
sub work            # expect error 28: Function declaration found in main program code
# expect error 3: No expression present
  print "b"         # expect: b
endsub
