for i = 1 to 4
  if i % 0 = 1 then
    print "never"
  else
    if i < 3 then print "low" else print "high" endif
  endif
next
# expect: low
# expect: low
# expect: high
# expect: high
