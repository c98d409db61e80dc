for n = 1 to 256
  open "data" as n text
next
sum = 0
for n = 1 to 256
  sum = sum + filesize(n)
  close n
next
print sum   # expect: 768.000000
