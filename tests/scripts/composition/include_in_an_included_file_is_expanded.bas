include "outer.bas"
# expect: outer
# expect: inner
# expect: outer again
print "main"        # expect: main
end
