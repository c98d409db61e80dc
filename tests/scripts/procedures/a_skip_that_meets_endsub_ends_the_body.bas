call s()
print "on"
end
sub s()
  if 1 = 2 then
    print "not reached"
endsub   # expect error 56: ELSE or ENDIF statement is missing
print "not reached"
