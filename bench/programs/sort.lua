-- Shell sort of 16,000 numbers, repeated.
local n = 45   -- size
local count = 16000
local floor = math.floor
local items = {}

local function sortitems(count)
  local items = items
  local gap = 1
  while gap < count do
    gap = gap * 3 + 1
  end
  while gap > 1 do
    gap = floor(gap / 3)
    for i = gap + 1, count do
      local moving = items[i]
      local j = i - gap
      while j >= 1 and items[j] > moving do
        items[j + gap] = items[j]
        j = j - gap
      end
      items[j + gap] = moving
    end
  end
end

local seed = 42
local total = 0
for _ = 1, n do
  for i = 1, count do
    seed = (seed * 3877 + 29573) % 139968
    items[i] = seed
  end
  sortitems(count)
  total = total + items[1] + items[floor(count / 2) + 1] + items[count]
end
print(string.format("%.0f", total))
