print format(rad2dms(6.2831852586982189), "%.8f")   # expect: 359.59599900
print format(rad2dms(6.283185278090766), "%.8f")    # expect: 359.59599940
print format(rad2dms(6.283185285847785), "%.8f")    # expect: 0.00000000
print format(rad2dms(6.2831853052403321), "%.8f")   # expect: 0.00000000
