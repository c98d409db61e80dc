print rad2dms(0)   # expect: 0.000000
