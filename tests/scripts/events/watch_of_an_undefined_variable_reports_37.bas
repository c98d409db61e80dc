watch create nope changed  # expect error 37: Undefined variable
watch remove nope  # expect error 37: Undefined variable
watch clear nope   # expect error 37: Undefined variable
nope = 1
print "behind"     # expect: behind
