global Count
Count = 5
print Count               # expect: 5.000000
print "["; count; "]"     # expect: []
count = 7
print Count; " "; count   # expect: 5.000000 7.000000
