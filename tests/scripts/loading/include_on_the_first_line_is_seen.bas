include "part.bas"
# expect: part
print "main"        # expect: main
end
