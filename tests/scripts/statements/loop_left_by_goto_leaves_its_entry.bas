# The second "next" takes the entry of the loop that was left.
for i = 1 to 3
  print i
  goto out
next
out:
next
# expect: 1.000000
# expect: 2.000000
# expect: 3.000000
print i             # expect: 4.000000
