#!/usr/bin/env python3
"""Writes the three tables of this example: an invented county with its shires, towns and streams.

    make_tables.py FOLDER

The bytes are always the same: the date in the headers is fixed, and nothing is random. One town is marked as
deleted, one names a shire that there is not, and numbers stand at the right of their fields, as GIS programs write
them.
"""
import struct
import sys
from pathlib import Path

DATE = bytes([126, 7, 1])  # 1 July 2026, by years since 1900

SHIRES = ([("CODE", "C", 4, 0), ("NAME", "C", 20, 0), ("AREA", "N", 10, 3)],
          [("NW", "Ashwold", 412.75), ("NE", "Bréval", 288.2), ("SW", "Carrick Moor", 1034.125),
           ("SE", "Dunmere", 97.5), ("IS", "Easterholm", 12.25)])

TOWNS = ([("NAME", "C", 24, 0), ("SHIRE_NAME", "C", 20, 0), ("POPULATION", "N", 9, 0), ("CHARTERED", "D", 8, 0),
          ("MARKET", "L", 1, 0)],
         [("Ashford-under-Wold", "Ashwold", 18250, "14120301", "T"), ("Little Ash", "Ashwold", 640, "", "F"),
          ("Brevalton", "Bréval", 9120, "15330914", "T"), ("Ménil-le-Grand", "Bréval", 2310, "16010505", "T"),
          ("Carrick", "Carrick Moor", 4475, "13990220", "T"), ("Moorend", "Carrick Moor", 318, "", "F"),
          ("High Carrick", "Carrick Moor", 1207, "18720611", "?"), ("Dunmere", "Dunmere", 31940, "12700101", "T"),
          ("Port Dunmere", "Dunmere", 12085, "17450818", "T"), ("Old Dunmere", "Dunmere", 77, "12010930", "F"),
          ("Northmark", "Faraway", 5500, "19020402", "F")])
DROWNED = "Old Dunmere"

STREAMS = ([("NAME", "C", 16, 0), ("LENGTH", "F", 12, 2), ("CLASS", "N", 2, 0)],
           [("Ash Water", 41.25, 2), ("Brey", 18.6, 3), ("Carrick Burn", 63.05, 1), ("Dun", 102.4, 1)])


def cell(value, kind, length, decimals):
    text = f"{value:{length}.{decimals}f}" if kind in "NF" else str(value).ljust(length)
    return text.encode("cp1252")


def table(fields, rows):
    record_length = 1 + sum(length for _, _, length, _ in fields)
    data = bytes([3]) + DATE + struct.pack("<IHH20x", len(rows), 33 + 32 * len(fields), record_length)
    for name, kind, length, decimals in fields:
        data += struct.pack("<11sc4xBB14x", name.encode("ascii"), kind.encode("ascii"), length, decimals)
    data += b"\x0D"
    for row in rows:
        record = b"*" if row[0] == DROWNED else b" "
        record += b"".join(cell(value, *field[1:]) for value, field in zip(row, fields))
        assert len(record) == record_length, row
        data += record
    return data + b"\x1A"


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    for name, contents in (("shires", SHIRES), ("towns", TOWNS), ("streams", STREAMS)):
        (folder / f"{name}.dbf").write_bytes(table(*contents))


if __name__ == "__main__":
    main()
