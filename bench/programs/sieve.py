# The sieve of Eratosthenes up to 16,000, repeated.
n = 1000   # size


def main():
    limit = 15999
    flags = [0] * (limit + 1)
    primes = 0
    for _ in range(n):
        for i in range(1, limit + 1):
            flags[i] = 1
        for i in range(2, limit + 1):
            if flags[i] == 1:
                primes = primes + 1
                for j in range(i + i, limit + 1, i):
                    flags[j] = 0
    print("%.0f" % primes)


main()
