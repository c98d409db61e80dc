#!/usr/bin/env python3
"""Reads every table that scripts write with readers that share nothing with the library.

    check_written_tables.py --runner PATH SCRIPT_TESTS_DIR

Runs the script tests of the area "tables", each in a folder of its own, and one script that writes every field type,
then reads each table found there with dbfdump (Debian package shapelib) and with a reader written here. Without
dbfdump nothing is checked and the exit status is 77.
"""
import argparse
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from table_reading import (NoTable, Tally, differences, dump_rows, encoding_of, find_dbfdump, read_table, stripped)

TIMEOUT_SECONDS = 60

ALL_TYPES = """
library "include/field.bas"
h = dbfcreate("types", Field("NAME", "C", 20, 0), Field("PRICE", "N", 1, 2), Field("RATE", "F", 1, 4), Field("OK", "L", 1, 0), Field("DAY", "D", 1, 0), Field("WIDE", "C", 253, 0))
x = dbfappend(h, "Müller", "12.5", "0.33333", "yes", "20260731", repeat("w", 300))
x = dbfappend(h, "", "", "", "", "", "")
x = dbfappend(h, " inner blanks ", "-7.125", "-1", "No", "19991231", "€")
x = dbfappend(h, "deleted", "1", "2", "T", "20000229", "x")
x = dbfdelete(h, 3)
x = dbfappend(h, "a name of more than twenty characters", "123456789012345678901", "1.", "f", "20260801", "last")
x = dbfwrite(h, 1, "written over", "3.14159", "2.71828", "?", "20260802", "second")
x = dbfclose(h)
h = dbfopen("types")
x = dbfappend(h, "appended later", "99.99", "1.5", "Y", "20260803", "z")
x = dbfclose(h)
end
"""


def run_script(runner, folder, script):
    # The script tests check what they print and report; here only the tables count.
    subprocess.run([str(runner), "--ui=console", "--on-error=continue", script], cwd=folder,
                   stdin=subprocess.DEVNULL, capture_output=True, timeout=TIMEOUT_SECONDS, check=False)


def check_tables(tally, dbfdump, folder, name, given):
    for path in sorted(folder.rglob("*")):
        if path.suffix.lower() != ".dbf" or not path.is_file() or given.get(path.relative_to(folder)) == path.read_bytes():
            continue
        encoding = encoding_of(path)
        try:
            table = read_table(path.read_bytes(), encoding)
        except NoTable as reason:
            tally.check(f"{name}: {path.name}", [str(reason)])
            continue
        problems = []
        data = path.read_bytes()
        length = 1 + sum(field.length for field in table.fields)
        is_new = path.relative_to(folder) not in given
        if is_new and (table.header_length, table.record_length) != (33 + 32 * len(table.fields), length):
            problems.append(f"header length {table.header_length}, record length {table.record_length}")
        if table.record_length > 0 and data[-1:] != b"\x1A":
            problems.append("no end marker")
        if table.count > len(table.rows):
            tally.skip(f"{name}: {path.name}: its header counts records that are not there")
            continue
        dumped = dump_rows(dbfdump, path, encoding)
        if dumped is None and table.count > 0:
            tally.skip(f"{name}: {path.name}: dbfdump cannot read it")
            continue
        problems += differences(stripped(table.counted), dumped or [])
        tally.check(f"{name}: {path.name}, {table.count} records of {len(table.fields)} fields", problems)


def main():
    parser = argparse.ArgumentParser(description="Reads the tables that scripts write with other readers.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    parser.add_argument("scripts", type=Path, help="the folder of the script tests")
    arguments = parser.parse_args()
    runner, area = arguments.runner.resolve(), arguments.scripts.resolve() / "tables"
    tally = Tally()
    dbfdump = find_dbfdump()
    if dbfdump is None:
        tally.skip("dbfdump is not installed (Debian package shapelib)")
        return tally.finish()
    scripts = sorted(area.glob("*.bas"))
    if not scripts:
        parser.error(f"no script tests in {area}")
    for script in [None] + scripts:
        with tempfile.TemporaryDirectory() as scratch:
            folder = Path(scratch)
            shutil.copytree(area / "include", folder / "include")
            if script is None:
                (folder / "types.bas").write_text(ALL_TYPES, encoding="utf-8")
                run_script(runner, folder, "types.bas")
                tables = list(folder.glob("*.dbf"))
                tally.check("every field type: written", [] if tables else ["no table"])
                check_tables(tally, dbfdump, folder, "every field type", {})
                continue
            shutil.copyfile(script, folder / script.name)
            data = script.with_suffix(".data")
            if data.is_dir():
                shutil.copytree(data, folder, dirs_exist_ok=True)
            given = {path.relative_to(folder): path.read_bytes() for path in folder.rglob("*") if path.is_file()}
            run_script(runner, folder, script.name)
            check_tables(tally, dbfdump, folder, script.stem, given)
    return tally.finish()


if __name__ == "__main__":
    sys.exit(main())
