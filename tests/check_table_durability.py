#!/usr/bin/env python3
"""Shows what of a table survives a killed program and a full disk.

    check_table_durability.py --runner PATH [--kills N] [--seed N]

A script appends 10,000 records and is killed at a random moment, again and again. Every record that had been appended
by then must be in the file whole, the table must open, and the header must count what it counted when the table was
closed last. A disk that is full is made by a limit on the size of files, and by a small file system of its own where
that is permitted.
"""
import argparse
import os
import random
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from table_reading import NoTable, Tally, read_table

TIMEOUT_SECONDS = 120
RECORDS = 10000
FIELDS = """
dim name[3]
name[0] = "NAME"
name[1] = "C"
name[2] = 20
dim size[4]
size[0] = "SIZE"
size[1] = "N"
size[2] = 18
size[3] = 1
"""

# The progress is written behind each append, by the functions for files, which keep nothing back either.
APPEND = """
open "progress" for output as 1
for i = {first} to {last}
  x = dbfappend(h, format(i, "record %d"), i / 2)
  x = write(1, i, 4)
next
close 1
"""
CREATE = FIELDS + 'h = dbfcreate("t", name, size)\n'
CLOSED_BEFORE = 5
CREATED = CREATE + APPEND

LOOK = """
h = dbfopen("t")
print h
print dbfnumrecords(h)
x = dbfseek(h, {last})
r = dbfread(h)
print r[0]
"""

FILL = CREATE + """
count = 0
going = True
do while going = True
  going = dbfappend(h, format(count, "record %d"), count / 2)
  if going = True then
    count = count + 1
  endif
loop
print int(count)
print dbfappend(h, "one more", 1)
print dbfnumrecords(h)
x = dbfseek(h, count - 1)
r = dbfread(h)
print r[0]
x = dbfclose(h)
h = dbfopen("t")
print dbfnumrecords(h)
"""


def record(number):
    return (False, [f"record {number}".ljust(20), f"{number / 2:.1f}".ljust(18)])


def run_script(runner, folder, text, limit=None):
    """Exit status, printed lines, errors; `limit` is the largest size of a file."""
    (folder / "script.bas").write_text(text, encoding="utf-8")
    set_limit = None
    if limit is not None:
        def set_limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
    # The signal of that limit has its usual action here, which ends a process that does not care.
    done = subprocess.run([str(runner), "--ui=console", "--on-error=abort", "script.bas"], cwd=folder,
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=TIMEOUT_SECONDS, check=False,
                          preexec_fn=set_limit)
    return done.returncode, done.stdout.decode("utf-8").split("\n"), done.stderr.decode("utf-8", "replace").strip()


def progress_of(folder):
    data = (folder / "progress").read_bytes() if (folder / "progress").is_file() else b""
    return struct.unpack_from("<i", data, len(data) // 4 * 4 - 4)[0] + 1 if len(data) >= 4 else 0


def check_killed(runner, folder, counted):
    """The problems of a table whose writer was killed, and how many records it holds."""
    path = folder / "t.dbf"
    data = path.read_bytes() if path.is_file() else b""
    # A program killed as it begins its own count has left those that were there before.
    appended = max(progress_of(folder), min(counted))
    try:
        table = read_table(data)
    except NoTable as reason:
        # Killed before the header was written: then nothing can have been appended.
        return ([] if appended == 0 else [f"{appended} records were appended, but: {reason}"]), 0
    problems = []
    if not appended <= len(table.rows) <= appended + 1:
        problems.append(f"{appended} records were appended, {len(table.rows)} are in the file")
    for number, row in enumerate(table.rows):
        if row != record(number):
            problems.append(f"record {number} is {row!r}")
            break
    if table.count not in counted:
        problems.append(f"the header counts {table.count} records")
    if table.rows:
        last = len(table.rows) - 1
        status, printed, errors = run_script(runner, folder, LOOK.format(last=last))
        if (status, printed) != (0, ["0", str(table.count), f"record {last}".ljust(20), ""]):
            problems.append(f"looked at: exit status {status}, printed {printed}, {errors}")
    return problems, len(table.rows)


def check_kills(tally, runner, kills, generator):
    # How long an undisturbed run takes says where the moments are to lie.
    with tempfile.TemporaryDirectory() as scratch:
        started = time.monotonic()
        status, _, errors = run_script(runner, Path(scratch), CREATED.format(first=0, last=RECORDS - 1))
        duration = time.monotonic() - started
        rows = read_table((Path(scratch) / "t.dbf").read_bytes()).counted
        problems = [] if (status, errors) == (0, "") else [f"exit status {status}: {errors}"]
        if rows != [record(number) for number in range(RECORDS)]:
            problems.append(f"{len(rows)} records, or other ones")
        tally.check(f"{RECORDS} records appended without disturbance", problems)
    problems, sizes = [], []
    for number in range(kills):
        with tempfile.TemporaryDirectory() as scratch:
            folder = Path(scratch)
            counted = {0}
            if number % 2 == 0:
                script = CREATED.format(first=0, last=RECORDS - 1)
            else:
                # Closed with five records, then opened and appended to.
                run_script(runner, folder, CREATE + APPEND.format(first=0, last=CLOSED_BEFORE - 1))
                script = 'h = dbfopen("t")\n' + APPEND.format(first=CLOSED_BEFORE, last=RECORDS - 1)
                counted = {CLOSED_BEFORE}
            (folder / "append.bas").write_text(script, encoding="utf-8")
            writer = subprocess.Popen([str(runner), "--ui=console", "append.bas"], cwd=folder,
                                      stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            time.sleep(generator.uniform(0, duration))
            writer.send_signal(signal.SIGKILL)
            writer.wait(TIMEOUT_SECONDS)
            if progress_of(folder) == RECORDS:
                counted.add(RECORDS)  # it was about to end, and may have closed the table
            found, size = check_killed(runner, folder, counted)
            problems += [f"kill {number}: {problem}" for problem in found]
            sizes.append(size)
    middle = sum(0 < size < RECORDS for size in sizes)
    if middle < kills // 4:
        problems.append(f"only {middle} of {kills} kills came in the middle")
    tally.check(f"{kills} kills, {middle} in the middle of appending (with {min(sizes)} to {max(sizes)} records)",
                problems)


def check_filled(name, tally, path, status, printed, errors):
    problems = []
    if (status, errors) != (0, ""):
        problems.append(f"exit status {status}: {errors}")
    else:
        table = read_table(path.read_bytes())
        count = int(printed[0])
        if count == 0 or printed != [str(count), "False", str(count), f"record {count - 1}".ljust(20), str(count), ""]:
            problems.append(f"printed {printed}")
        if table.count != count or table.rows != [record(number) for number in range(count)]:
            problems.append(f"{count} records were appended, the header counts {table.count} and the file holds "
                            f"{len(table.rows)}, or other ones")
        name = f"{name}: {count} records, then False"
    tally.check(name, problems)


def check_full_disk(tally, runner):
    for limit in (4096, 65536, 65536 + 17):
        with tempfile.TemporaryDirectory() as scratch:
            folder = Path(scratch)
            status, printed, errors = run_script(runner, folder, FILL, limit)
            check_filled(f"files of at most {limit} bytes", tally, folder / "t.dbf", status, printed, errors)
    with tempfile.TemporaryDirectory() as scratch:
        folder = Path(scratch)
        status, _, _ = run_script(runner, folder, CREATE + "print h", 20)
        problems = [] if status == 0 else [f"exit status {status}"]
        tally.check("no room for a header", problems)

    unshare = shutil.which("unshare")
    with tempfile.TemporaryDirectory() as scratch:
        folder = Path(scratch)
        (folder / "script.bas").write_text(FILL, encoding="utf-8")
        command = ('mkdir disk && mount -t tmpfs -o size=64k none disk && touch mounted && cd disk && '
                   '"$0" --ui=console --on-error=abort ../script.bas; status=$?; cp t.dbf ..; exit $status')
        done = subprocess.run([unshare or "unshare", "--mount", "sh", "-c", command, str(runner)], cwd=folder,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=TIMEOUT_SECONDS,
                              check=False) if unshare else None
        if not (folder / "mounted").exists():
            tally.skip("a file system of 64 KiB cannot be mounted here")
        else:
            check_filled("a file system of 64 KiB", tally, folder / "t.dbf", done.returncode,
                         done.stdout.decode("utf-8").split("\n"), done.stderr.decode("utf-8", "replace").strip())


def main():
    parser = argparse.ArgumentParser(description="Shows what of a table survives a killed program and a full disk.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    parser.add_argument("--kills", type=int, default=100, help="how often the program is killed")
    parser.add_argument("--seed", type=int, help="of the random moments")
    arguments = parser.parse_args()
    runner = arguments.runner.resolve()
    if not os.access(runner, os.X_OK):
        parser.error("no such runner")
    seed = arguments.seed if arguments.seed is not None else random.SystemRandom().randrange(1 << 32)
    print(f"seed {seed}")
    tally = Tally()
    check_kills(tally, runner, arguments.kills, random.Random(seed))
    check_full_disk(tally, runner)
    return tally.finish()


if __name__ == "__main__":
    sys.exit(main())
