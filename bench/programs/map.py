# A dictionary of text keys: distinct keys stored, counted up through kept keys, looked up by new ones.
n = 100000   # size


def main():
    stock = {}
    kept = min(n, 16000)
    keys = []
    for i in range(n):
        key = "item" + "%d" % i
        stock[key] = 0
        if i < kept:
            keys.append(key)
    seed = 42
    for _ in range(n * 3):
        seed = (seed * 3877 + 29573) % 139968
        spot = seed % kept
        stock[keys[spot]] = stock[keys[spot]] + 1
    # Every second one of these keys is not in the dictionary.
    found = 0
    total = 0
    for i in range(n):
        key = "item" + "%d" % (i * 2)
        if key in stock:
            found = found + 1
            total = total + stock[key] * i
    print("%.0f %.0f" % (found, total))


main()
