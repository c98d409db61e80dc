# The text is there twice, inserted and appended, and its include line reports in both.
include "part.bas"
# expect: part
# expect error 1 at "\ninclude \"part.bas\" # itself": Syntax error
# expect error 1 at "\ninclude \"part.bas\" # itself": Syntax error
print "main"        # expect: main
end
