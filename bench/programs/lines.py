# Reading and parsing a text file: the size is the number of its lines.
n = 400000   # size


def main():
    rows = 0
    units = 0
    money = 0
    pumps = 0
    with open("lines.txt", encoding="ascii") as file:
        for row in file:
            p = row.find(";")
            name = row[:p]
            rest = row[p + 1:]
            q = rest.find(";")
            count = float(rest[:q])
            price = float(rest[q + 1:])
            rows = rows + 1
            units = units + count
            money = money + price
            if name == "pump":
                pumps = pumps + count
    if rows != n:
        print("the file has another number of lines")
    print("%.0f %.2f %.0f" % (units, money, pumps))


main()
