print twice(4)      # expect: 8.000000
end
library "lib.bas"
