x = comportopen(9999)
answer = comportread(9999)
done = comportwrite(9999, "x")
print "["; answer; done; "]"            # expect: []
if answer = "" then
  print "a text"
else
  print "no value"                       # expect: no value
endif
if done = True then
  print "written"
else
  print "not written"                    # expect: not written
endif
