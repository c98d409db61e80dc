x = 1
global Y
Y = 2
run "child.bas"
# expect: x  Y  .
print x; Y          # expect: 1.0000002.000000
