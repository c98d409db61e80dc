print format(dms2rad("12.3"), "%.9f")   # expect: 0.218166156
