print "main"        # expect: main
include "program_that_includes_itself_reports_1.bas"
# expect error 1 at "\ninclude \"program_that_includes_itself_reports_1.bas\"": Syntax error
print "on"          # expect: on
