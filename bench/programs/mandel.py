# The Mandelbrot set: arithmetic of doubles.
n = 15000   # size


def main():
    columns = 64
    steps = 0
    inside = 0
    for row in range(n):
        y = 2.5 * row / n - 1.25
        for column in range(columns):
            x = 3.0 * column / columns - 2.25
            zr = 0.0
            zi = 0.0
            k = 0
            while k < 50:
                zr2 = zr * zr
                zi2 = zi * zi
                if zr2 + zi2 > 4.0:
                    break
                zi = 2.0 * zr * zi + y
                zr = zr2 - zi2 + x
                steps = steps + 1
                k = k + 1
            if k == 50:
                inside = inside + 1
    print("%.0f %.0f" % (steps, inside))


main()
