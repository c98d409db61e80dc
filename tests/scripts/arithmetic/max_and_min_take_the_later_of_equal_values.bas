print max(-0, 0)   # expect: 0.000000
print max(0, -0)   # expect: -0.000000
print min(-0, 0)   # expect: 0.000000
print min(0, -0)   # expect: -0.000000
