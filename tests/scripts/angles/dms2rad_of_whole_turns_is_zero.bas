print dms2rad(0)      # expect: 0.000000
print dms2rad(360)    # expect: 0.000000
print dms2rad(720)    # expect: 0.000000
print dms2rad(-360)   # expect: 0.000000
