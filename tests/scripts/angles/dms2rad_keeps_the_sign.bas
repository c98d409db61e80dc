print format(dms2rad(-0.0001), "%.12f")     # expect: -0.000004848137
print format(dms2rad(-12.3), "%.12f")       # expect: -0.218166156499
print format(dms2rad(-45.3015), "%.12f")    # expect: -0.794197531710
print format(dms2rad(-179.5959), "%.12f")   # expect: -3.141587805453
