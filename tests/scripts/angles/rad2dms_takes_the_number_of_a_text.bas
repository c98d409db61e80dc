print format(rad2dms("0.5 rad"), "%.8f")   # expect: 28.38524031
