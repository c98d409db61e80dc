n = 0
goto start
print "skipped"
back:
n = n + 1
start:
if n < 2 then
  goto back
endif
print n             # expect: 2.000000
