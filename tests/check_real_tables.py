#!/usr/bin/env python3
"""Compares what scripts read from real dBase tables with two other readers, and updates copies of them.

    check_real_tables.py --runner PATH

The tables are those in the folder dbf of BRINDLE_TEST_DATA; without it nothing is checked and the exit status is 77.
dbfdump (Debian package shapelib) is the second reader; without it the first one stands alone, which is said.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from table_reading import Tally, differences, dump_rows, find_dbfdump, read_table, stripped

TIMEOUT_SECONDS = 60

# Every value on a line of its own between bars, so that its blanks show.
READ = """
h = dbfopen("{name}")
print dbfnumrecords(h)
fields = dbffieldnames(h)
count = dbfnumfields(h)
for i = 0 to count - 1
  print fields[i]
next
records = dbfnumrecords(h)
for k = 1 to records
  v = dbfread(h)
  for i = 0 to count - 1
    shown = "|" + v[i] + "|"
    print shown
  next
next
"""

# The first record written as it was read, and the last one appended once more.
UPDATE = """
h = dbfopen("{name}")
x = dbfseek(h, {last})
v = dbfread(h)
print dbfappend(h, {values})
x = dbfseek(h, 0)
v = dbfread(h)
print dbfwrite(h, 0, {values})
print dbfnumrecords(h)
print dbfclose(h)
"""


def run_script(runner, folder, text, problems):
    (folder / "script.bas").write_text(text, encoding="utf-8")
    done = subprocess.run([str(runner), "--ui=console", "--on-error=abort", "script.bas"], cwd=folder,
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=TIMEOUT_SECONDS, check=False)
    if done.returncode != 0 or done.stderr:
        problems.append(f"exit status {done.returncode}: {done.stderr.decode('utf-8', 'replace').strip()}")
    return done.stdout.decode("utf-8", "replace").split("\n")


def check_reading(tally, runner, path, folder, dbfdump):
    problems = []
    table = read_table(path.read_bytes())
    lines = run_script(runner, folder, READ.format(name=path.name), problems)
    wanted = [str(table.count)] + [field.name for field in table.fields]
    wanted += [f"|{value}|" for _, values in table.counted for value in values]
    for number, (one, other) in enumerate(zip(wanted + [""], lines), 1):
        if one != other:
            problems.append(f"line {number}: expected {one!r}, printed {other!r}")
            break
    if len(lines) != len(wanted) + 1:
        problems.append(f"expected {len(wanted) + 1} lines, printed {len(lines)}")
    tally.check(f"{path.name}: {len(table.counted)} records of {len(table.fields)} fields as read byte by byte", problems)

    if dbfdump is None:
        tally.skip(f"{path.name}: dbfdump is not installed (Debian package shapelib)")
        return
    dumped = dump_rows(dbfdump, path)
    if dumped is None:
        tally.skip(f"{path.name}: dbfdump cannot read it")
        return
    tally.check(f"{path.name}: as dbfdump reads it", differences(stripped(table.counted), dumped))


def check_updating(tally, runner, path, folder, dbfdump):
    problems = []
    before = path.read_bytes()
    table = read_table(before)
    names = ", ".join(f"v[{i}]" for i in range(len(table.fields)))
    copy = folder / path.name
    shutil.copyfile(path, copy)
    copy.chmod(0o644)
    printed = run_script(runner, folder, UPDATE.format(name=path.name, last=table.count - 1, values=names), problems)
    if printed != ["True", "True", str(table.count + 1), "True", ""]:
        problems.append(f"printed {printed}")
    after = copy.read_bytes()
    end = table.header_length + table.count * table.record_length

    if after[4:8] != (table.count + 1).to_bytes(4, "little"):
        problems.append("the header does not count the new record")
    if after[0:1] + after[8:table.header_length] != before[0:1] + before[8:table.header_length]:
        problems.append("the header has changed beyond date and record count")
    first = table.header_length + table.record_length
    if after[first:end] != before[first:end]:
        problems.append("records that were not written to have changed")
    if len(after) != end + table.record_length + 1 or after[-1:] != b"\x1A":
        problems.append(f"{len(after)} bytes, ending in {after[-1:]!r}")
    rows = read_table(after).counted
    # A new record is blank where a text ends, whatever stood behind it in the old one.
    if stripped(rows[-1:]) != stripped([(False, table.counted[-1][1])]):
        problems.append(f"the appended record is {rows[-1]!r} instead of {table.counted[-1]!r}")
    if rows and rows[0][1] != table.counted[0][1]:
        problems.append(f"the first record is {rows[0]!r} instead of {table.counted[0]!r}")
    if dbfdump is not None:
        dumped = dump_rows(dbfdump, copy)
        if dumped is None:
            tally.skip(f"{path.name}: dbfdump cannot read the updated copy")
        else:
            problems += differences(stripped(rows), dumped)
    tally.check(f"{path.name}: an update changes nothing else", problems)


def main():
    parser = argparse.ArgumentParser(description="Compares scripts with other readers on real dBase tables.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    runner = parser.parse_args().runner.resolve()
    tally = Tally()
    data = os.environ.get("BRINDLE_TEST_DATA")
    if not data:
        tally.skip("BRINDLE_TEST_DATA is not set")
        return tally.finish()
    tables = sorted((Path(data) / "dbf").glob("*.dbf"))
    tally.check("BRINDLE_TEST_DATA holds real tables", [] if tables else [f"no tables in {data}/dbf"])
    dbfdump = find_dbfdump()
    for path in tables:
        with tempfile.TemporaryDirectory() as scratch:
            scratch = Path(scratch)
            shutil.copyfile(path, scratch / path.name)
            check_reading(tally, runner, path, scratch, dbfdump)
            check_updating(tally, runner, path, scratch, dbfdump)
    return tally.finish()


if __name__ == "__main__":
    sys.exit(main())
