print 0.0000004    # expect: 0.000000
print 0.0000006    # expect: 0.000001
print 0.9999999    # expect: 1.000000
print 2.0000015    # expect: 2.000002
print -0.0000009   # expect: -0.000001
print 1.2345675    # expect: 1.234568
print 0.1234565    # expect: 0.123456
