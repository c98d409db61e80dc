-- Many small calls with text and number parameters.
local n = 5000000   -- size
local notes = 0

local function weight(name, amount, factor)
  if name == "add" then
    return amount * factor
  else
    return amount - factor
  end
end

local function other(name)
  if name == "add" then
    return "take"
  else
    return "add"
  end
end

local function note(name, amount)
  if name == "take" then
    notes = notes + amount
  end
end

local total = 0
local kind = "add"
for i = 1, n do
  total = total + weight(kind, i, 3)
  note(kind, 2)
  kind = other(kind)
end
print(string.format("%.0f %.0f %s", total, notes, kind))
