x = 1
watch remove x
x = 2
print x  # expect: 2.000000
