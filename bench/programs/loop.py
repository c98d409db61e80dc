# Counted loops and accumulation.
n = 40000000   # size


def main():
    sum_ = 0
    for i in range(1, n + 1):
        sum_ = sum_ + i
    count = 0
    total = 0
    while count < n:
        count = count + 1
        total = total + 3
    print("%.0f %.0f" % (sum_, total))


main()
