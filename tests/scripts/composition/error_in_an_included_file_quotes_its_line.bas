include "part.bas"
# expect error 55 at "\nnext # in the part": Illegal NEXT statement.
print "main"        # expect: main
end
