# The sieve of Eratosthenes up to 16,000, repeated.
n = 1000   # size
limit = 15999
dim flags[limit + 1]
primes = 0
for turn = 1 to n
  for i = 1 to limit
    flags[i] = 1
  next
  for i = 2 to limit
    if flags[i] = 1 then
      primes = primes + 1
      j = i + i
      do while j <= limit
        flags[j] = 0
        j = j + i
      loop
    endif
  next
next
print format(primes, "%.0f")
