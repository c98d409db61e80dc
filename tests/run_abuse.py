#!/usr/bin/env python3
"""What comes between a script and its files and devices: other programs, full disks, cables that are pulled.

    run_abuse.py --runner PATH [--only NAME]

Each test has a folder of its own and runs the runner in it. A script gets the stated error or result, never a crash or an
endless wait, and what was written before is in the file.
The last line is "N passed, N failed", with ", N skipped" when something was skipped.
"""
import argparse
import fcntl
import os
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from table_reading import Tally, read_table

SLOW = bool(os.environ.get("BRINDLE_SLOW_TESTS"))
TIME_LIMIT = 240 if SLOW else 60
FIELD = 'dim field[3]\nfield[0] = "WHAT"\nfield[1] = "C"\nfield[2] = 20\n'
# How tables lock their end: one byte behind everything, for one opening alone.
END_LOCK = 1 << 62
F_OFD_SETLK = 37
ERROR_53 = "Run-time file I/O error."


class Program:
    """A script that runs; `limit` is the largest size of a file."""

    def __init__(self, runner, folder, text, name="script.bas", limit=None, devices=None):
        (folder / name).write_text(text, encoding="utf-8")

        def set_limit():
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        environment = dict(os.environ, BRINDLE_DEVICES=str(devices or folder))
        self.process = subprocess.Popen([str(runner), "--ui=console", "--on-error=continue", name], cwd=folder,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        env=environment, preexec_fn=set_limit)

    def finish(self):
        """Exit status, what was printed, what was reported; -1 for a program that does not end."""
        try:
            out, errors = self.process.communicate(timeout=TIME_LIMIT)
        except subprocess.TimeoutExpired:
            self.process.kill()
            out, errors = self.process.communicate()
            return -1, out.decode("utf-8", "replace"), errors.decode("utf-8", "replace")
        return self.process.returncode, out.decode("utf-8", "replace"), errors.decode("utf-8", "replace")


def expect(wanted, found, what):
    return [] if wanted == found else [f"{what}: {found!r}, not {wanted!r}"]


def await_file(path):
    end = time.monotonic() + TIME_LIMIT
    while not path.exists() and time.monotonic() < end:
        time.sleep(0.005)


# ---- Two programs and one table

# Both wait for the same file, so that they start together.
WAIT = 'names = ""\ndo while len(names) = 0\n  names = Look()\nloop\n'
LOOK = '\nend\nfunction Look()\n  Look = ""\n  found = findfiles("go", 0)\n  Look = found\nendfunction\n'


def appending(opening, tag, count):
    return (FIELD + opening + WAIT + f'for i = 1 to {count}\n  if dbfappend(h, format(i, "{tag} %06d")) = False then\n'
            f'    print "refused"\n  endif\nnext\nx = dbfclose(h)\nprint x\n' + LOOK)


def append_together(runner, folder, openings, count):
    programs = [Program(runner, folder, appending(opening, f"writer {number}", count), f"{number}.bas")
                for number, opening in enumerate(openings)]
    time.sleep(0.3)
    (folder / "go").touch()
    problems = []
    for number, program in enumerate(programs):
        problems += expect((0, "True\n", ""), program.finish(), f"program {number}")
    table = read_table((folder / "t.dbf").read_bytes())
    rows = [row[1][0].rstrip() for row in table.rows]
    wanted = [f"writer {number} {i:06d}" for number in range(len(openings)) for i in range(1, count + 1)]
    lost = sorted(set(wanted) - set(rows))
    if lost or len(rows) != len(wanted):
        problems.append(f"{len(rows)} records of {len(wanted)}; lost {len(lost)}, {lost[:3]}")
    return problems + expect(len(wanted), table.count, "records that the header counts")


def two_programs_append_to_one_table(runner, folder):
    made = Program(runner, folder, FIELD + 'h = dbfcreate("t", field)\nx = dbfclose(h)\n').finish()
    return expect((0, "", ""), made, "creating") + append_together(runner, folder, ['h = dbfopen("t")\n'] * 2, 20000)


def a_table_that_another_program_has_created_takes_records_when_that_has_closed_it(runner, folder):
    creator = Program(runner, folder, FIELD + 'h = dbfcreate("t", field)\nx = dbfappend(h, "one")\nopen "made" for output as 1\n'
                      + WAIT + 'print dbfappend(h, "two")\nx = dbfclose(h)\n' + LOOK, "creator.bas")
    await_file(folder / "made")
    script = 'h = dbfopen("t")\nprint dbfappend(h, "three")\nx = dbfseek(h, 0)\nprint left(dbfread(h), 3)\n'
    refused = Program(runner, folder, script, "second.bas").finish()
    (folder / "go").touch()
    problems = expect((0, "False\none\n", ""), refused, "while it is open") + expect((0, "True\n", ""), creator.finish(), "creator")
    problems += expect((0, "True\none\n", ""), Program(runner, folder, script, "second.bas").finish(), "afterwards")
    return problems + expect(["one", "two", "three"],
                             [row[1][0].rstrip() for row in read_table((folder / "t.dbf").read_bytes()).counted], "records")


def a_reader_sees_whole_records_while_another_program_writes(runner, folder):
    writer = FIELD + 'h = dbfcreate("t", field)\n' + (
        'for i = 0 to 19999\n  x = dbfappend(h, format(i, "record %08d"))\nnext\nx = dbfclose(h)\nopen "done" for output as 1\n')
    reader = 'h = -1\ndo while h < 0\n  h = dbfopen("t")\nloop\ntorn = 0\nn = 0\n' + (
        'do while n < 20000\n  x = dbfseek(h, n)\n  r = dbfread(h)\n'
        # A record that is not there yet reads as the one before.
        '  wanted = format(n, "record %08d     ")\n  before = format(n - 1, "record %08d     ")\n'
        '  if r[0] = wanted then\n    n = n + 1\n  else\n    if n > 0 then\n      if r[0] != before then\n'
        '        torn = torn + 1\n        n = n + 1\n      endif\n    endif\n  endif\nloop\nprint int(torn)\n')
    programs = [Program(runner, folder, writer, "writer.bas"), Program(runner, folder, reader, "reader.bas")]
    return expect((0, "", ""), programs[0].finish(), "writer") + expect((0, "0\n", ""), programs[1].finish(), "reader")


def a_table_in_creation_is_refused_to_a_second_creator(runner, folder):
    first = Program(runner, folder, FIELD + 'h = dbfcreate("t", field)\nx = dbfappend(h, "mine")\nopen "made" for output as 1\n'
                    + WAIT + LOOK, "first.bas")
    await_file(folder / "made")
    second = Program(runner, folder, FIELD + 'print dbfcreate("t", field)\n', "second.bas").finish()
    (folder / "go").touch()
    problems = expect((0, "-1\n", ""), second, "second") + expect((0, "", ""), first.finish(), "first")
    return problems + expect(["mine"], [row[1][0].rstrip() for row in read_table((folder / "t.dbf").read_bytes()).counted],
                             "records")


def a_table_removed_by_another_program_is_still_the_one_that_is_open(runner, folder):
    script = FIELD + ('h = dbfcreate("t", field)\nx = dbfappend(h, "kept")\nopen "made" for output as 1\n' + WAIT +
                      'print dbfappend(h, "more")\nx = dbfseek(h, 0)\nprint dbfread(h)\nprint dbfnumrecords(h)\n'
                      'print dbfclose(h)\n' + LOOK)
    program = Program(runner, folder, script)
    await_file(folder / "made")
    (folder / "t.dbf").unlink()
    (folder / "go").touch()
    return expect((0, "True\nkept                \n2\nTrue\n", ""), program.finish(), "program")


def a_program_that_stopped_while_it_appended_holds_nobody_up(runner, folder):
    """Somebody else has the right to the table's end and does not give it back."""
    Program(runner, folder, FIELD + 'h = dbfcreate("t", field)\nx = dbfappend(h, "one")\n').finish()
    with open(folder / "t.dbf", "r+b") as table:
        fcntl.fcntl(table, F_OFD_SETLK, struct.pack("hhqqi4x", fcntl.F_WRLCK, os.SEEK_SET, END_LOCK, 1, 0))
        held = Program(runner, folder, 'h = dbfopen("t")\nprint dbfappend(h, "two")\nprint dbfclose(h)\n').finish()
        before = read_table((folder / "t.dbf").read_bytes())
    free = Program(runner, folder, 'h = dbfopen("t")\nprint dbfappend(h, "two")\nprint dbfnumrecords(h)\nprint dbfclose(h)\n').finish()
    return (expect((0, "False\nTrue\n", ""), held, "while it is held") + expect(1, before.count, "records then") +
            expect((0, "True\n2\nTrue\n", ""), free, "afterwards"))


# ---- Disks that are full

TEXT = 'open "{name}" for {mode} as 1 text\ngood = int(0)\nfor i = 1 to 4000\n  x = "refused"\n' \
       '  x = writeline(1, format(i, "line %06d~"))\n  if x = 1 then\n    good = i\n  endif\nnext\nclose 1\nprint int(good)\n'
TEXT = TEXT.replace("~", "\n")
RAW = 'open "{name}" for {mode} as 1\ngood = int(0)\nfor i = 1 to 4000\n  n = i\n  x = "refused"\n' \
      '  x = write(1, n, 4)\n  if x = 1 then\n    good = i\n  endif\nnext\nclose 1\nprint int(good)\n'


def filled(path, found, record, errors_wanted=True):
    """Whether all that was accepted is in the file, and all else was reported by error 53."""
    status, printed, errors = found
    data = path.read_bytes()
    good = int(printed) if printed.strip().isdigit() else -1
    problems = []
    if status != 1 or good <= 0:
        problems.append(f"status {status}, printed {printed!r}, errors {errors[:200]!r}")
    elif not data.startswith(b"".join(record(i) for i in range(1, good + 1))):
        problems.append(f"{good} were accepted; the file has {len(data)} bytes, or other ones")
    if errors.count(ERROR_53) != 4000 - good:
        problems.append(f"{errors.count(ERROR_53)} errors for {4000 - good} that were refused")
    return problems


def line_record(number):
    return f"line {number:06d}\n".encode()


def raw_record(number):
    return number.to_bytes(4, "little")


def a_text_file_stops_at_the_limit_for_files(runner, folder):
    found = Program(runner, folder, TEXT.format(name="out", mode="output"), limit=8192).finish()
    return filled(folder / "out", found, line_record)


def a_binary_file_stops_at_the_limit_for_files(runner, folder):
    found = Program(runner, folder, RAW.format(name="out", mode="output"), limit=8192).finish()
    return filled(folder / "out", found, raw_record)


def on_a_small_disk(runner, folder, script):
    """Runs it on a file system of 16 KiB; None where that cannot be mounted."""
    unshare = shutil.which("unshare")
    if not unshare:
        return None
    (folder / "script.bas").write_text(script, encoding="utf-8")
    command = ('mkdir disk && mount -t tmpfs -o size=16k none disk && touch mounted && cd disk && '
               '"$0" --ui=console --on-error=continue ../script.bas; status=$?; cp out ..; exit $status')
    done = subprocess.run([unshare, "--mount", "sh", "-c", command, str(runner)], cwd=folder, stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=TIME_LIMIT, check=False)
    if not (folder / "mounted").exists():
        return None
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def a_text_file_fills_a_disk(runner, folder):
    found = on_a_small_disk(runner, folder, TEXT.format(name="out", mode="output"))
    return None if found is None else filled(folder / "out", found, line_record)


def a_binary_file_fills_a_disk(runner, folder):
    # 4,000 elements do not: each is written often enough.
    script = RAW.format(name="out", mode="output").replace("write(1, n, 4)", 'write(1, n, 4)\n  if x = 1 then\n'
                                                           '    x = write(1, n, 4)\n  endif')
    found = on_a_small_disk(runner, folder, script)
    return None if found is None else filled(folder / "out", found, lambda number: raw_record(number) * 2)


def a_device_that_is_always_full_reports_every_write(runner, folder):
    script = 'open "/dev/full" for append as 1 {kind}\nx = {write}\nclose 1\nprint "closed"\n'
    problems = []
    for kind, write in (("text", 'writeline(1, "some text")'), ("", "write(1, 5, 4)")):
        status, printed, errors = Program(runner, folder, script.format(kind=kind, write=write)).finish()
        problems += expect((1, "closed\n", 1), (status, printed, errors.count(ERROR_53)), f"{kind or 'binary'} file")
    return problems


def the_runners_own_output_may_be_full(runner, folder):
    (folder / "script.bas").write_text("for i = 1 to 1000\n  print i\nnext\n", encoding="utf-8")
    with open("/dev/full", "wb") as full:
        done = subprocess.run([str(runner), "--ui=console", "script.bas"], cwd=folder, stdin=subprocess.DEVNULL, stdout=full,
                              stderr=subprocess.PIPE, timeout=TIME_LIMIT, check=False)
    return [] if done.returncode in (0, 1) else [f"exit status {done.returncode}"]


# ---- Cables that are pulled

class Line:
    """A serial line under the name COM1 of a folder."""

    def __init__(self, folder):
        self.folder = folder / "devices"
        self.folder.mkdir()
        self.master, self.device = os.openpty()
        (self.folder / "com1").symlink_to(os.ttyname(self.device))

    def pull(self):
        os.close(self.master)
        os.close(self.device)
        (self.folder / "com1").unlink()


def pulled(runner, folder, action, result):
    """Repeats an action; behind the pull it gives `result` a thousand times and in time."""
    line = Line(folder)
    script = (f'x = comportopen(1, 115200, 0, 0, 50)\nopen "ready" for output as 1\nbegun = int(0)\ngone = ""\n'
              'do while len(gone) = 0\n  begun = begun + 1\n  ' + action + '\n  gone = findfiles("gone", 0)\nloop\n'
              f'x = "none"\n{action}\nprint "["; x; "]"\nfor i = 1 to 20\n  {action}\nnext\n'
              'x = comportclose(1)\nprint x\nx = comportopen(1)\nprint x\nx = comportread(1)\nprint comportwrite(1, "a")\n'
              'print comportclose(1)\n')
    # What findfiles does not find leaves its result as it was: never assigned here.
    script = script.replace('gone = findfiles("gone", 0)', 'gone = Gone()') + \
        'end\nfunction Gone()\n  Gone = ""\n  Gone = findfiles("gone", 0)\nendfunction\n'
    program = Program(runner, folder, script, devices=line.folder)
    await_file(folder / "ready")
    time.sleep(0.3)
    line.pull()
    (folder / "gone").touch()
    status, printed, errors = program.finish()
    return expect((0, f"[{result}]\nTrue\nTrue\n", ""), (status, printed[:len(result) + 13], errors), "program") + \
        expect(True, printed.endswith("True\n"), "the last closing")


def a_line_is_pulled_while_a_script_reads(runner, folder):
    return pulled(runner, folder, "x = comportread(1)", "")


def a_line_is_pulled_while_a_script_writes(runner, folder):
    # Nobody takes the bytes: soon the script waits for room.
    return pulled(runner, folder, 'x = comportwrite(1, repeat("x", 500))', "False")


def a_line_is_pulled_while_a_script_waits_for_long(runner, folder):
    line = Line(folder)
    program = Program(runner, folder, 'x = comportopen(1, 4800, 0, 0, 3000)\nopen "ready" for output as 1\n'
                      'print "["; comportread(1); "]"\nprint comportwrite(1, "a")\nprint comportclose(1)\n', devices=line.folder)
    await_file(folder / "ready")
    time.sleep(0.3)
    line.pull()
    return expect((0, "[]\nFalse\nTrue\n", ""), program.finish(), "program")


TESTS = [two_programs_append_to_one_table, a_table_that_another_program_has_created_takes_records_when_that_has_closed_it,
         a_reader_sees_whole_records_while_another_program_writes, a_table_in_creation_is_refused_to_a_second_creator,
         a_program_that_stopped_while_it_appended_holds_nobody_up,
         a_table_removed_by_another_program_is_still_the_one_that_is_open, a_text_file_stops_at_the_limit_for_files,
         a_binary_file_stops_at_the_limit_for_files, a_text_file_fills_a_disk, a_binary_file_fills_a_disk,
         a_device_that_is_always_full_reports_every_write, the_runners_own_output_may_be_full,
         a_line_is_pulled_while_a_script_reads, a_line_is_pulled_while_a_script_writes,
         a_line_is_pulled_while_a_script_waits_for_long]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True, type=Path, help="the interpreter's path")
    parser.add_argument("--only", help="only the tests whose name holds this")
    arguments = parser.parse_args()
    runner = arguments.runner.resolve()
    tally = Tally()
    for test in TESTS:
        if arguments.only and arguments.only not in test.__name__:
            continue
        with tempfile.TemporaryDirectory(prefix="brindle-abuse-") as name:
            problems = test(runner, Path(name))
        title = test.__name__.replace("_", " ")
        if problems is None:
            tally.skip(f"{title}: no file system can be mounted here")
        else:
            tally.check(title, problems)
    return tally.finish()


if __name__ == "__main__":
    sys.exit(main())
