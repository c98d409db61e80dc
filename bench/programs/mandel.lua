-- The Mandelbrot set: arithmetic of doubles.
local n = 15000   -- size
local columns = 64
local steps = 0
local inside = 0
for row = 0, n - 1 do
  local y = 2.5 * row / n - 1.25
  for column = 0, columns - 1 do
    local x = 3.0 * column / columns - 2.25
    local zr = 0.0
    local zi = 0.0
    local k = 0
    while k < 50 do
      local zr2 = zr * zr
      local zi2 = zi * zi
      if zr2 + zi2 > 4.0 then
        break
      end
      zi = 2.0 * zr * zi + y
      zr = zr2 - zi2 + x
      steps = steps + 1
      k = k + 1
    end
    if k == 50 then
      inside = inside + 1
    end
  end
end
print(string.format("%.0f %.0f", steps, inside))
