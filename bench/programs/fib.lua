-- Recursion: the Fibonacci function called on itself, repeated.
local n = 1000   -- size

local function fib(k)
  if k < 2 then
    return k
  else
    return fib(k - 1) + fib(k - 2)
  end
end

local total = 0
for _ = 1, n do
  total = total + fib(20)
end
print(string.format("%.0f", total))
