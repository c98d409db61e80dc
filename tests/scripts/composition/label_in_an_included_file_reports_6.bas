# Deliberate: the text is there twice, so its labels are too.
# expect error 6 at "\nplace: print \"part\"": Lable table full
print "main"        # expect: main
end
include "part.bas"
