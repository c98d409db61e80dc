-- A table of text keys: distinct keys stored, counted up through kept keys, looked up by new ones.
local n = 100000   -- size
local format = string.format
local stock = {}
local kept = math.min(n, 16000)
local keys = {}
for i = 0, n - 1 do
  local key = "item" .. format("%d", i)
  stock[key] = 0
  if i < kept then
    keys[i] = key
  end
end
local seed = 42
for _ = 1, n * 3 do
  seed = (seed * 3877 + 29573) % 139968
  local spot = seed % kept
  stock[keys[spot]] = stock[keys[spot]] + 1
end
-- Every second one of these keys is not in the table.
local found = 0
local total = 0
for i = 0, n - 1 do
  local key = "item" .. format("%d", i * 2)
  if stock[key] then
    found = found + 1
    total = total + stock[key] * i
  end
end
print(format("%.0f %.0f", found, total))
