-- Nested counted loops with arithmetic in the innermost one.
local n = 35000   -- size
local sum = 0
for i = 1, n do
  for j = 1, 100 do
    for k = 1, 10 do
      sum = sum + i * j - k * 2
    end
  end
end
print(string.format("%.0f", sum))
