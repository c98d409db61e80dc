print format(rad2dms(0.18064152910004502), "%.8f")   # expect: 10.20599900
print format(rad2dms(0.18064154849259226), "%.8f")   # expect: 10.20599940
print format(rad2dms(0.18064155624961115), "%.8f")   # expect: 10.21000000
print format(rad2dms(0.18064157564215841), "%.8f")   # expect: 10.21000000
print format(rad2dms(0.18064157738748765), "%.8f")   # expect: 10.21000000
