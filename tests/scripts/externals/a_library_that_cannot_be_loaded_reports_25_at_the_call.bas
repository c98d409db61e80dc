declare function beep lib "nowhere" (byval a as integer) as integer
print "declared"  # expect: declared
x = beep(1)       # expect error 25: Incorrect external library name
call beep(1)      # expect error 25: Incorrect external library name
