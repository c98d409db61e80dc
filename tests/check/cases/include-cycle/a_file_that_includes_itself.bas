include "a_file_that_includes_itself.bas"
# problem: include-cycle@9
print "on"
