print format(dms2rad(372.3), "%.12f")      # expect: 0.218166156499
print format(dms2rad(732.3), "%.12f")      # expect: 0.218166156499
print format(dms2rad(-372.3), "%.12f")     # expect: -0.218166156499
print format(dms2rad(405.3015), "%.12f")   # expect: 0.794197531710
