# Many small calls with text and number parameters.
n = 5000000   # size
notes = 0


def weight(name, amount, factor):
    if name == "add":
        return amount * factor
    else:
        return amount - factor


def other(name):
    if name == "add":
        return "take"
    else:
        return "add"


def note(name, amount):
    global notes
    if name == "take":
        notes = notes + amount


def main():
    total = 0
    kind = "add"
    for i in range(1, n + 1):
        total = total + weight(kind, i, 3)
        note(kind, 2)
        kind = other(kind)
    print("%.0f %.0f %s" % (total, notes, kind))


main()
