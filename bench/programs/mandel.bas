# The Mandelbrot set: arithmetic of doubles.
n = 15000   # size
columns = 64
steps = 0
inside = 0
for row = 0 to n - 1
  y = 2.5 * row / n - 1.25
  for column = 0 to columns - 1
    x = 3 * column / columns - 2.25
    zr = 0
    zi = 0
    k = 0
    do while k < 50
      zr2 = zr * zr
      zi2 = zi * zi
      if zr2 + zi2 > 4 then
        k = 1000
      else
        zi = 2 * zr * zi + y
        zr = zr2 - zi2 + x
        steps = steps + 1
        k = k + 1
      endif
    loop
    if k = 50 then
      inside = inside + 1
    endif
  next
next
print format(steps, "%.0f"); " "; format(inside, "%.0f")
