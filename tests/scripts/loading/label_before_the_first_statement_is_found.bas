top: print "pass"   # expect: pass
# expect: pass
dim n
n = 1 + n
if n < 2 then
  goto top
endif
