# Nested counted loops with arithmetic in the innermost one.
n = 35000   # size


def main():
    sum_ = 0
    for i in range(1, n + 1):
        for j in range(1, 101):
            for k in range(1, 11):
                sum_ = sum_ + i * j - k * 2
    print("%.0f" % sum_)


main()
