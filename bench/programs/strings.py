# Text: append, format, single characters, search, replace.
n = 4500   # size


def main():
    commas = 0
    found = 0
    length = 0
    for turn in range(1, n + 1):
        s = ""
        for i in range(1, 101):
            s = s + "%d" % (turn + i) + ","
        for p in range(len(s)):
            if s[p] == ",":
                commas = commas + 1
        for i in range(10, 101):
            found = found + s.find("%d" % (turn + i) + ",")
        t = s.replace(",", "; ")
        length = length + len(t) + len(t[:7]) + len(t[-5:])
    print("%.0f %.0f %.0f" % (commas, found, length))


main()
