s = "a
b"
print s; "c"
# expect: a
# expect: bc
