if 1 = 1 then
  goto out
else
  print "skipped"
endif
print "skipped"
out:
print "on"          # expect: on
