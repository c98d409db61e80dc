# Shell sort of 16,000 numbers, repeated.
n = 45   # size
items = [0] * 16000


def sortitems(count):
    gap = 1
    while gap < count:
        gap = gap * 3 + 1
    while gap > 1:
        gap = gap // 3
        for i in range(gap, count):
            moving = items[i]
            j = i - gap
            while j >= 0 and items[j] > moving:
                items[j + gap] = items[j]
                j = j - gap
            items[j + gap] = moving


def main():
    count = 16000
    seed = 42
    total = 0
    for _ in range(n):
        for i in range(count):
            seed = (seed * 3877 + 29573) % 139968
            items[i] = seed
        sortitems(count)
        total = total + items[0] + items[count // 2] + items[count - 1]
    print("%.0f" % total)


main()
