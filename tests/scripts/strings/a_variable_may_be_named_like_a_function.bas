left = "abc"
print left(left, 2)   # expect: ab
