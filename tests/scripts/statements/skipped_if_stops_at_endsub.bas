if 1 = 2 then
  print "skipped"
endsub              # expect error 56: ELSE or ENDIF statement is missing
print "on"          # expect: on
