include "part.bas"
# expect: a
# expect: b
print "main"        # expect: main
end
