# expect error 56 at "\nprint \"skipped\"": ELSE or ENDIF statement is missing
print "a"           # expect: a
if 1 = 2 then
print "skipped"
