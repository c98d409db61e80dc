x = 1
include "part.bas"
print x             # expect: 2.000000
end
