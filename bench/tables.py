#!/usr/bin/env python3
"""Measures dBase tables: 100,000 records written, scanned and updated.

    bench/tables.py --program build/release/brindle_bench_tables [--records N] [--rounds N]

The scan is compared with reading the same bytes by CFile in pieces of a record, and with a loop of Python's struct
over the same file. All sums are compared; a difference ends the benchmark with an error, and so does a scan that is
slower than three times the pieces or slower than Python.
"""
import argparse
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

RECORD = struct.Struct("<c24s18s18s8s1s")
HEADER_LENGTH = 32 * 5 + 33
MOST_TIMES_PIECES = 3.0


def python_scan(path):
    """What Scan of tables.cpp does: every value of every record as text."""
    total = 0
    with open(path, "rb") as file:
        file.seek(HEADER_LENGTH)
        while len(record := file.read(RECORD.size)) == RECORD.size:
            fields = [field.decode("cp1252") for field in RECORD.unpack(record)[1:]]
            total += ord(fields[0][7])
    return total


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", required=True, type=Path, help="brindle_bench_tables")
    parser.add_argument("--records", type=int, default=100000)
    parser.add_argument("--rounds", type=int, default=5, help="the best one is shown")
    arguments = parser.parse_args()
    figures = {}
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run([str(arguments.program.resolve()), folder, str(arguments.records),
                               str(arguments.rounds)], capture_output=True, text=True, check=False)
        if done.returncode != 0:
            sys.exit(done.stderr)
        for line in done.stdout.splitlines():
            name, seconds, total = line.split()
            figures[name] = (float(seconds), int(total))
        best = float("inf")
        for _ in range(arguments.rounds):
            start = time.perf_counter()
            total = python_scan(Path(folder) / "bench.dbf")
            best = min(best, time.perf_counter() - start)
        figures["python"] = (best, total)

    print("| what | seconds | microseconds a record |\n| --- | ---: | ---: |")
    for name, (seconds, _) in figures.items():
        print(f"| {name} | {seconds:.3f} | {seconds / arguments.records * 1e6:.2f} |")
    failures = []
    if figures["write"][1] != arguments.records or figures["update"][1] != arguments.records:
        failures.append("records are missing")
    if len({figures[name][1] for name in ("pieces", "scan", "python")}) != 1:
        failures.append(f"the sums differ: {figures}")
    ratio = figures["scan"][0] / figures["pieces"][0]
    print(f"scan / pieces: {ratio:.2f}, scan / python: {figures['scan'][0] / figures['python'][0]:.2f}")
    if ratio > MOST_TIMES_PIECES:
        failures.append(f"the scan takes more than {MOST_TIMES_PIECES:.0f} times as long as the pieces")
    if figures["scan"][0] >= figures["python"][0]:
        failures.append("the scan is slower than Python")
    for failure in failures:
        print(f"error: {failure}", file=sys.stderr)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
