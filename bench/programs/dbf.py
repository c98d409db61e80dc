# A dBase table: the size is the number of records that are written and then scanned.
import struct
import time

n = 50000   # size


def descriptor(name, kind, length, decimals):
    return struct.pack("<11sc4xBB14x", name, kind, length, decimals)


def main():
    kinds = [b"pump", b"valve", b"filter", b"hose"]
    fields = (descriptor(b"NAME", b"C", 24, 0) + descriptor(b"KIND", b"C", 8, 0)
              + descriptor(b"UNITS", b"N", 18, 0) + descriptor(b"PRICE", b"N", 18, 2))
    today = time.localtime()
    layout = struct.Struct("<c24s8s18s18s")
    with open("records.dbf", "wb") as file:
        file.write(struct.pack("<4BIHH20x", 3, today.tm_year % 100, today.tm_mon, today.tm_mday,
                               n, len(fields) + 33, layout.size))
        file.write(fields + b"\r")
        seed = 42
        for i in range(1, n + 1):
            seed = (seed * 3877 + 29573) % 139968
            file.write(b" %-24b%-8b%-18d%-18.2f" % (b"item %d" % i, kinds[seed // 34992], seed, seed / 4))
        file.write(b"\x1a")

    rows = 0
    amount = 0
    money = 0
    pumps = 0
    with open("records.dbf", "rb") as file:
        count, start, length = struct.unpack("<4xIHH20x", file.read(32))
        file.seek(start)
        for _ in range(count):
            mark, name, kind, units, price = layout.unpack(file.read(length))
            rows = rows + 1
            amount = amount + float(units)
            money = money + float(price)
            if kind == b"pump    ":
                pumps = pumps + 1
    print("%.0f %.0f %.2f %.0f" % (rows, amount, money, pumps))


main()
