print format(tan(0), "%.12f")       # expect: 0.000000000000
print format(tan(0.5), "%.12f")     # expect: 0.546302489844
print format(tan(1), "%.12f")       # expect: 1.557407724655
print format(tan(-1), "%.12f")      # expect: -1.557407724655
print format(tan(2), "%.12f")       # expect: -2.185039863262
print format(tan(-0.25), "%.12f")   # expect: -0.255341921221
print format(tan(100), "%.12f")     # expect: -0.587213915157
