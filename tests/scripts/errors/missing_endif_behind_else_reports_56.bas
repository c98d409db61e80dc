# expect error 56 at "\nprint \"skipped\"": ELSE or ENDIF statement is missing
if 1 = 1 then
print "a"           # expect: a
else
print "skipped"
