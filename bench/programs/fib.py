# Recursion: the Fibonacci function called on itself, repeated.
n = 1000   # size


def fib(k):
    if k < 2:
        return k
    else:
        return fib(k - 1) + fib(k - 2)


def main():
    total = 0
    for _ in range(n):
        total = total + fib(20)
    print("%.0f" % total)


main()
