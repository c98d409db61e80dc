-- Text: append, format, single characters, search, replace.
local n = 4500   -- size
local format, sub, find, gsub = string.format, string.sub, string.find, string.gsub
local commas = 0
local found = 0
local length = 0
for turn = 1, n do
  local s = ""
  for i = 1, 100 do
    s = s .. format("%d", turn + i) .. ","
  end
  for p = 1, #s do
    if sub(s, p, p) == "," then
      commas = commas + 1
    end
  end
  for i = 10, 100 do
    found = found + find(s, format("%d", turn + i) .. ",", 1, true) - 1
  end
  local t = gsub(s, ",", "; ")
  length = length + #t + #sub(t, 1, 7) + #sub(t, -5)
end
print(format("%.0f %.0f %.0f", commas, found, length))
