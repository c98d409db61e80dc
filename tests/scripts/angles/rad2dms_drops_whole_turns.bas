print format(rad2dms(6.2919119534395582), "%.8f")    # expect: 0.30000000
print format(rad2dms(6.9856803311073037), "%.8f")    # expect: 40.15000000
print format(rad2dms(12.666727046348846), "%.8f")    # expect: 5.45000000
print format(rad2dms(-6.9856803311073037), "%.8f")   # expect: -40.15000000
