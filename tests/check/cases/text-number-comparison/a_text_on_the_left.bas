a = "5"
if a = 5 then print "y" endif  # problem: text-number-comparison@6
