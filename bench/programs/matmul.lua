-- Matrix product: arrays with a computed index.
local n = 80   -- size
local size = 60
local cells = size * size
local a, b, c = {}, {}, {}
local v = 0
for i = 1, cells do
  v = v + 1
  if v > 6 then
    v = 0
  end
  a[i] = v
  b[i] = 6 - v
end
for _ = 1, n do
  for i = 1, size do
    for j = 1, size do
      local s = 0
      for k = 1, size do
        s = s + a[(i - 1) * size + k] * b[(k - 1) * size + j]
      end
      c[(i - 1) * size + j] = s
    end
  end
end
local total = 0
for i = 1, cells do
  total = total + i * c[i]
end
print(string.format("%.0f", total))
