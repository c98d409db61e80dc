# Matrix product: arrays with a computed index.
n = 80   # size


def main():
    size = 60
    cells = size * size
    a = [0] * (cells + 1)
    b = [0] * (cells + 1)
    c = [0] * (cells + 1)
    v = 0
    for i in range(1, cells + 1):
        v = v + 1
        if v > 6:
            v = 0
        a[i] = v
        b[i] = 6 - v
    for _ in range(n):
        for i in range(1, size + 1):
            for j in range(1, size + 1):
                s = 0
                for k in range(1, size + 1):
                    s = s + a[(i - 1) * size + k] * b[(k - 1) * size + j]
                c[(i - 1) * size + j] = s
    total = 0
    for i in range(1, cells + 1):
        total = total + i * c[i]
    print("%.0f" % total)


main()
