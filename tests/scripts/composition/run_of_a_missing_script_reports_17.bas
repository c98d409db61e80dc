# Nothing was loaded, so there is no line to quote.
run "missing.bas"
# expect error 17 at "": Not enough memory to load source file
print "on"          # expect: on
