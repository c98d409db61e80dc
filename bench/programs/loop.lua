-- Counted loops and accumulation.
local n = 40000000   -- size
local sum = 0
for i = 1, n do
  sum = sum + i
end
local count = 0
local total = 0
while count < n do
  count = count + 1
  total = total + 3
end
print(string.format("%.0f %.0f", sum, total))
