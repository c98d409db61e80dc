-- The sieve of Eratosthenes up to 16,000, repeated.
local n = 1000   -- size
local limit = 15999
local flags = {}
local primes = 0
for _ = 1, n do
  for i = 1, limit do
    flags[i] = 1
  end
  for i = 2, limit do
    if flags[i] == 1 then
      primes = primes + 1
      for j = i + i, limit, i do
        flags[j] = 0
      end
    end
  end
end
print(string.format("%.0f", primes))
