dim n as integer
if n = 0 then print "y" endif  # problem: unset-comparison@4
