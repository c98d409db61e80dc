print format(rad2dms(-0.017453292519943295), "%.8f")   # expect: -1.00000000
print format(rad2dms(-0.21816615649929119), "%.8f")    # expect: -12.30000000
print format(rad2dms(-0.52359877559829882), "%.8f")    # expect: -30.00000000
print format(rad2dms(-0.79412480965741994), "%.8f")    # expect: -45.30000000
print format(rad2dms(-1.0471800979040777), "%.8f")     # expect: -59.59564000
print format(rad2dms(-1.5707963267948966), "%.8f")     # expect: -90.00000000
print format(rad2dms(-2.1547136813421197), "%.8f")     # expect: -123.27216000
