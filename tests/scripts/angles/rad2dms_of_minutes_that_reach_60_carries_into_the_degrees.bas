print format(rad2dms(0.19198616923800813), "%.8f")   # expect: 10.59599900
print format(rad2dms(0.19198618863055536), "%.8f")   # expect: 10.59599940
print format(rad2dms(0.19198619638757425), "%.8f")   # expect: 11.00000000
print format(rad2dms(0.19198621578012151), "%.8f")   # expect: 11.00000000
