-- Reading and parsing a text file: the size is the number of its lines.
local n = 400000   -- size
local find, sub = string.find, string.sub
local rows = 0
local units = 0
local money = 0
local pumps = 0
for row in io.lines("lines.txt") do
  local p = find(row, ";", 1, true)
  local name = sub(row, 1, p - 1)
  local rest = sub(row, p + 1)
  local q = find(rest, ";", 1, true)
  local count = tonumber(sub(rest, 1, q - 1))
  local price = tonumber(sub(rest, q + 1))
  rows = rows + 1
  units = units + count
  money = money + price
  if name == "pump" then
    pumps = pumps + count
  end
end
if rows ~= n then
  print("the file has another number of lines")
end
print(string.format("%.0f %.2f %.0f", units, money, pumps))
