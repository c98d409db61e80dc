open "empty" as 1
for b = 1 to 3
  b = iseof(1)
next      # expect error 55: Illegal NEXT statement.
print b   # expect: True
