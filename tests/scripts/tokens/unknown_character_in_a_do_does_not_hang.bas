do while _ < 1      # expect error 2: Unbalanced parens
# expect error 0: Error loading resource string.
  print "skipped"
loop
print "on"          # expect: on
