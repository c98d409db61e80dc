include "part.bas" print "never"
# expect: part
print "main"        # expect: main
end
