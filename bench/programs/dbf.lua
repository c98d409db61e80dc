-- A dBase table: the size is the number of records that are written and then scanned.
local n = 50000   -- size
local char, format, sub = string.char, string.format, string.sub

-- A whole number as bytes, the lowest first, and back: without string.pack, which not every Lua has.
local function bytes(number, count)
  local text = ""
  for _ = 1, count do
    text = text .. char(number % 256)
    number = (number - number % 256) / 256
  end
  return text
end

local function number(text)
  local value = 0
  for i = #text, 1, -1 do
    value = value * 256 + text:byte(i)
  end
  return value
end

local function descriptor(name, kind, length, decimals)
  return name .. ("\0"):rep(11 - #name) .. kind .. ("\0"):rep(4) .. char(length, decimals) .. ("\0"):rep(14)
end

local kinds = { [0] = "pump", "valve", "filter", "hose" }
local fields = descriptor("NAME", "C", 24, 0) .. descriptor("KIND", "C", 8, 0)
  .. descriptor("UNITS", "N", 18, 0) .. descriptor("PRICE", "N", 18, 2)
local today = os.date("*t")
local file = assert(io.open("records.dbf", "wb"))
file:write(char(3, today.year % 100, today.month, today.day), bytes(n, 4), bytes(#fields + 33, 2), bytes(69, 2))
file:write(("\0"):rep(20), fields, "\r")
local seed = 42
for i = 1, n do
  seed = (seed * 3877 + 29573) % 139968
  local kind = kinds[(seed - seed % 34992) / 34992]
  file:write(format(" %-24s%-8s%-18d%-18.2f", "item " .. format("%d", i), kind, seed, seed / 4))
end
file:write("\26")
file:close()

file = assert(io.open("records.dbf", "rb"))
local header = file:read(32)
local count = number(sub(header, 5, 8))
local length = number(sub(header, 11, 12))
file:seek("set", number(sub(header, 9, 10)))
local rows = 0
local amount = 0
local money = 0
local pumps = 0
for _ = 1, count do
  local record = file:read(length)
  local name, kind = sub(record, 2, 25), sub(record, 26, 33)
  local units, price = sub(record, 34, 51), sub(record, 52, 69)
  rows = rows + 1
  amount = amount + tonumber(units)
  money = money + tonumber(price)
  if kind == "pump    " then
    pumps = pumps + 1
  end
end
file:close()
print(format("%.0f %.0f %.2f %.0f", rows, amount, money, pumps))
