#!/usr/bin/env python3
"""Runs scripts that talk over a serial line with an instrument played here.

    run_serial.py --runner PATH [--only NAME] EXAMPLES_DIR

Each test has a pseudo-terminal as its line and a folder of its own, where BRINDLE_DEVICES points. One group plays small
instruments to small scripts; the other plays logs of GPS receivers to the gps_serial example, at the pace that the
times in the log tell (sped up), and reads the table that the example writes without the interpreter. With
BRINDLE_TEST_DATA set, every file of its nmea folder is played too: logs of real receivers.
The last line is "N passed, N failed", with ", N skipped" when something was skipped.
"""
import argparse
import concurrent.futures
import fcntl
import os
import re
import select
import shlex
import shutil
import signal
import struct
import subprocess
import tempfile
import termios
import time
from pathlib import Path

SLOW = bool(os.environ.get("BRINDLE_SLOW_TESTS"))
TIME_LIMIT = 240 if SLOW else 90
# From the moment the port is in its mode until the script surely reads it.
SETTLING = 2.0 if SLOW else 0.5
LONGEST_PLAY = 4.0                 # seconds that a log takes, whatever its own time
TIOCGEXCL = 0x80045440


class Line:
    """A serial line: the instrument's end, the device, and the folder that gives it the name COM1."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.master, self.device = os.openpty()
        self.devices = self.folder / "devices"
        self.devices.mkdir()
        (self.devices / "com1").symlink_to(os.ttyname(self.device))

    def close(self):
        self.hang_up()
        os.close(self.device)

    def hang_up(self):
        if self.master is not None:
            os.close(self.master)
            self.master = None

    def is_exclusive(self):
        answer = fcntl.ioctl(self.device, TIOCGEXCL, struct.pack("i", 0))
        return struct.unpack("i", answer)[0] != 0

    def modes(self):
        return termios.tcgetattr(self.device)

    def await_port(self, process):
        """Until a script has opened the port; false when it ends without."""
        while not (self.is_exclusive() and not self.modes()[3] & termios.ICANON):
            if process.poll() is not None:
                return False
            time.sleep(0.01)
        time.sleep(SETTLING)
        return True

    def send(self, data):
        while data:
            data = data[os.write(self.master, data):]

    def receive(self, count, seconds=20.0):
        """That many bytes, or those that came before nothing followed for a while."""
        data = b""
        while len(data) < count and select.select([self.master], [], [], seconds)[0]:
            data += os.read(self.master, count - len(data))
        return data


class Script:
    """A script on its way in a folder of its own."""

    def __init__(self, runner, line, program=None, path="script.bas", options=()):
        if program is not None:
            (line.folder / path).write_text(program, encoding="utf-8")
        command = shlex.split(runner) + ["--ui=console", "--on-error=abort", *options, path]
        self.started = time.monotonic()
        self.process = subprocess.Popen(command, cwd=line.folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE,
                                        env={**os.environ, "BRINDLE_DEVICES": str(line.devices)})

    def finish(self):
        """What it printed, and every problem of the run itself."""
        problems = []
        try:
            printed, errors = self.process.communicate(timeout=TIME_LIMIT)
        except subprocess.TimeoutExpired:
            self.process.kill()
            printed, errors = self.process.communicate()
            problems.append(f"still running after {TIME_LIMIT} s")
        self.seconds = time.monotonic() - self.started
        if self.process.returncode != 0:
            problems.append(f"exit status {self.process.returncode}")
        if errors:
            problems.append("on stderr: " + errors.decode("utf-8", "replace").strip())
        return printed.decode("utf-8", "replace"), problems

    def finish_not_before(self, seconds):
        printed, problems = self.finish()
        if self.seconds < seconds:
            problems.append(f"ended after {self.seconds:.3f} s, before its time-outs of {seconds} s")
        return printed, problems


def expect(wanted, found, what):
    return [] if wanted == found else [f"{what}: expected {wanted!r}, found {found!r}"]


# ---- small instruments ----

def question_and_answer(runner, line):
    script = Script(runner, line, 'print comportopen(1, 9600, 0, 0, 15000)\nprint comportwrite(1, "*IDN?")\n'
                                  'print comportread(1)\nprint comportclose(1)\n')
    question = line.receive(5)
    line.send(b"LEVEL 3")
    printed, problems = script.finish()
    return problems + expect(b"*IDN?", question, "received") + expect("True\nTrue\nLEVEL 3\nTrue\n", printed, "printed")


def a_measuring_loop(runner, line):
    """A question for each reading; what the script makes of the answers shows that each came whole."""
    script = Script(runner, line, "x = comportopen(1, 115200, 0, 0, 15000)\ntotal = 0\nfor i = 1 to 20\n"
                                  '  x = comportwrite(1, format(i, "%d"))\n  total = total + val(comportread(1))\n'
                                  "next\nprint int(total)\n")
    for i in range(1, 21):
        if line.receive(len(str(i))) != str(i).encode():
            break
        line.send(b"%d.5 mm\r\n" % i)
    printed, problems = script.finish()
    return problems + expect("220\n", printed, "printed")


def settings_reach_the_device(runner, line):
    script = Script(runner, line, 'x = comportopen(1, 19200, 2, 2, 15000)\nprint comportread(1)\n')
    problems = [] if line.await_port(script.process) else ["the script ended"]
    modes = line.modes()
    problems += expect(termios.B19200, modes[5], "output speed")
    problems += expect(termios.CSTOPB, modes[2] & termios.CSTOPB, "two stop bits")
    problems += expect(termios.INPCK, modes[0] & termios.INPCK, "parity check")
    line.send(b"on")
    printed, others = script.finish()
    return problems + others + expect("on\n", printed, "printed")


def silence_is_empty_after_the_time_out(runner, line):
    printed, problems = Script(runner, line, 'x = comportopen(1, 4800, 0, 0, 700)\nprint "["; comportread(1); "]"\n'
                                             'print "["; comportread(1); "]"\n').finish_not_before(1.4)
    return problems + expect("[]\n[]\n", printed, "printed")


def too_long_a_text_is_not_sent(runner, line):
    script = Script(runner, line, 'x = comportopen(1)\nprint comportwrite(1, repeat("x", 513))\n'
                                  'print comportwrite(1, repeat("y", 512))\nprint comportwrite(1, "z")\n')
    received = line.receive(513)
    printed, problems = script.finish()
    return problems + expect(b"y" * 512 + b"z", received, "received") + expect("False\nTrue\nTrue\n", printed, "printed")


def every_byte_comes_back(runner, line):
    script = Script(runner, line, 'x = comportopen(1, 115200, 0, 0, 15000)\nreply = comportread(1)\n'
                                  "print len(reply)\nprint comportwrite(1, reply)\n")
    data = bytes(range(1, 256))
    problems = [] if line.await_port(script.process) else ["the script ended"]
    line.send(data)
    received = line.receive(len(data))
    printed, others = script.finish()
    return problems + others + expect(data, received, "received") + expect("255\nTrue\n", printed, "printed")


def a_code_page_reads_the_line(runner, line):
    script = Script(runner, line, "x = comportopen(1, 4800, 0, 0, 15000)\nprint comportread(1)\n",
                    options=["--codepage=windows-1251"])
    problems = [] if line.await_port(script.process) else ["the script ended"]
    line.send("Жук".encode("cp1251"))
    printed, others = script.finish()
    return problems + others + expect("Жук\n", printed, "printed")


def a_missing_device_is_neutral(runner, line):
    printed, problems = Script(runner, line, 'print comportopen(2)\nprint "["; comportread(2); "]"\n'
                                             'if comportwrite(2, "x") = True then\n  print "written"\nendif\n'
                                             "print comportclose(2)\nprint comportclose(2)\n").finish()
    return problems + expect("True\n[]\nTrue\nFalse\n", printed, "printed")


def opening_again_frees_the_device(runner, line):
    script = Script(runner, line, 'x = comportopen(1)\nx = comportopen(1, 9600)\nprint comportwrite(1, "again")\n')
    received = line.receive(5)
    printed, problems = script.finish()
    return (problems + expect(b"again", received, "received") + expect("True\n", printed, "printed")
            + expect(False, line.is_exclusive(), "the device is taken after the end"))


def a_pulled_plug_is_silence(runner, line):
    script = Script(runner, line, "x = comportopen(1, 4800, 0, 0, 15000)\nprint comportread(1)\n"
                                  'print "["; comportread(1); "]"\nprint comportwrite(1, "x")\n'
                                  "print comportclose(1)\n")
    problems = [] if line.await_port(script.process) else ["the script ended"]
    line.send(b"last words")
    time.sleep(SETTLING)
    line.hang_up()
    printed, others = script.finish()
    return problems + others + expect("last words\n[]\nFalse\nTrue\n", printed, "printed")


def two_programs_cannot_share_a_device(runner, line):
    first = Script(runner, line, "x = comportopen(1, 4800, 0, 0, 60000)\nprint comportread(1)\n")
    problems = [] if line.await_port(first.process) else ["the first script ended"]
    printed, others = Script(runner, line, 'x = comportopen(1)\nif comportwrite(1, "x") = True then\n'
                                           '  print "shared"\nelse\n  print "refused"\nendif\n', "second.bas").finish()
    problems += others + expect("refused\n", printed, "second printed")
    line.send(b"mine")
    printed, others = first.finish()
    return problems + others + expect("mine\n", printed, "first printed")


def a_killed_program_leaves_the_device_free(runner, line):
    first = Script(runner, line, "x = comportopen(1, 4800, 0, 0, 60000)\nprint comportread(1)\n")
    problems = [] if line.await_port(first.process) else ["the first script ended"]
    first.process.send_signal(signal.SIGKILL)
    first.process.communicate()
    second = Script(runner, line, 'x = comportopen(1)\nprint comportwrite(1, "next")\n', "second.bas")
    received = line.receive(4)
    printed, others = second.finish()
    return problems + others + expect(b"next", received, "received") + expect("True\n", printed, "second printed")


INSTRUMENTS = [
    question_and_answer, a_measuring_loop, settings_reach_the_device, silence_is_empty_after_the_time_out,
    too_long_a_text_is_not_sent, every_byte_comes_back, a_code_page_reads_the_line, a_missing_device_is_neutral,
    opening_again_frees_the_device, a_pulled_plug_is_silence, two_programs_cannot_share_a_device,
    a_killed_program_leaves_the_device_free,
]


# ---- logs of GPS receivers ----

def sent_lines(log):
    """What the receiver sent: the log without the comments that its keeper wrote on top."""
    return [line.rstrip(b"\r\n") + b"\r\n" for line in log.split(b"\n") if line.strip() and not line.startswith(b"#")]


def bursts(lines):
    """Groups of lines that the receiver sent together, each with its time of day (None: as the one before)."""
    groups, current = [], None
    for line in lines:
        found = re.match(rb"\$..(?:GGA|RMC),(\d\d)(\d\d)(\d\d(?:\.\d+)?),", line)
        moment = int(found[1]) * 3600 + int(found[2]) * 60 + float(found[3]) if found else None
        if not groups or (moment is not None and moment != current):
            groups.append([moment, b""])
        if moment is not None:
            current = moment
        groups[-1][1] += line
    return groups


def play(line, log):
    groups = bursts(sent_lines(log))
    pauses, before = [], None
    for moment, _ in groups:
        pause = 0.0
        if moment is not None:
            if before is not None:
                pause = (moment - before) % 86400
            before = moment
        # A damaged time of day is no day of waiting.
        pauses.append(pause if pause < 3600 else 0.0)
    speed = max(1.0, sum(pauses) / LONGEST_PLAY)
    for number, ((_, data), pause) in enumerate(zip(groups, pauses)):
        time.sleep(pause / speed)
        # A receiver's bytes do not come a sentence at a time: every other burst has a gap somewhere inside.
        cut = (number * 37) % len(data) if number % 2 else 0
        line.send(data[:cut])
        if cut:
            time.sleep(0.02)
        line.send(data[cut:])


class Heard:
    """What the table must hold, worked out from the bytes of the log."""

    def __init__(self, log):
        self.damaged = self.sentences = self.without_fix = 0
        self.fixes = []
        self.day, self.day_time, self.seen_gga, self.last = "", -1.0, False, ""
        for record in sent_lines(log):
            fields = self.fields_of(record.rstrip(b"\r\n"))
            if fields is None:
                self.damaged += 1
                continue
            self.sentences += 1
            if len(fields[0]) == 5 and fields[0][0] != "P":
                if fields[0].endswith("GGA"):
                    self.seen_gga = True
                    self.take(fields[1], fields[2:6] if int(fields[6] or 0) else [""], fields[9], fields[7])
                elif fields[0].endswith("RMC"):
                    if fields[2] == "A":
                        self.day, self.day_time = self.day_of(fields[9]), self.seconds(fields[1])
                    if not self.seen_gga:
                        self.take(fields[1], fields[3:7] if fields[2] == "A" else [""], "", "")

    @staticmethod
    def fields_of(record):
        body, star, rest = record[1:].partition(b"*")
        total = 0
        for byte in body:
            total ^= byte
        whole = record[:1] == b"$" and star and rest[:2].upper() == b"%02X" % total
        return body.decode("ascii").split(",") + [""] * 10 if whole else None

    @staticmethod
    def seconds(packed):
        return int(packed[:2]) * 3600 + int(packed[2:4]) * 60 + float(packed[4:]) if len(packed) >= 6 else -1.0

    @staticmethod
    def day_of(packed):
        year = int(packed[4:])
        return f"{year + (1900 if year >= 80 else 2000)}{packed[2:4]}{packed[:2]}"

    def take(self, moment, place, height, used):
        if "" in place:
            self.without_fix += 1
        elif moment != self.last:
            self.last = moment
            angles = [int(text[:-7 if "." not in text else text.index(".") - 2] or 0)
                      + float(text[text.index(".") - 2:]) / 60 for text in (place[0], place[2])]
            signs = [-1 if side in "SW" else 1 for side in (place[1], place[3])]
            day = self.day if self.seconds(moment) >= self.day_time else ""
            clock = f"{moment[:2]}:{moment[2:4]}:{moment[4:6]}"
            self.fixes.append((day, clock, signs[0] * angles[0], signs[1] * angles[1], height, used))


def read_table(path):
    """Names, types and lengths of the fields, and the records as texts; an exception for a damaged table."""
    data = path.read_bytes()
    count, header, length = struct.unpack_from("<IHH", data, 4)
    fields, offset = [], 32
    while data[offset] != 0x0D:
        name, kind, size, decimals = struct.unpack_from("<11sc4xBB", data, offset)
        fields.append((name.rstrip(b"\0").decode("ascii"), kind.decode("ascii"), size, decimals))
        offset += 32
    if length != 1 + sum(field[2] for field in fields) or len(data) != header + count * length + 1 or data[-1] != 0x1A:
        raise ValueError(f"{count} records of {length} behind {header} bytes do not make {len(data)} bytes")
    records = []
    for i in range(count):
        record, at, values = data[header + i * length:header + (i + 1) * length], 1, []
        if record[:1] != b" ":
            raise ValueError(f"record {i} begins with {record[:1]!r}")
        for field in fields:
            values.append(record[at:at + field[2]].decode("ascii").rstrip(" "))
            at += field[2]
        records.append(values)
    return fields, records


def compare_records(fixes, records):
    problems = expect(len(fixes), len(records), "number of records")
    for i, (fix, record) in enumerate(zip(fixes, records)):
        day, clock, latitude, longitude, height, used = fix
        problems += expect([day, clock], record[:2], f"day and time of record {i}")
        for wanted, found in ((latitude, record[2]), (longitude, record[3])):
            # Six decimals are kept: half a unit of the last one, and what doubles lose on the way.
            if not re.fullmatch(r"-?\d+\.\d{6}", found) or abs(float(found) - wanted) > 0.51e-6:
                problems.append(f"record {i}: expected {wanted:.7f}, found {found!r}")
        problems += expect([float(height) if height else None, used],
                           [float(record[4]) if record[4] else None, record[5]], f"height and satellites of record {i}")
    return problems[:10]


def listen(runner, line, log):
    """One run of the example while a log is played; printed text and problems."""
    script = Script(runner, line, path="fixes.bas")
    ready = line.await_port(script.process)
    problems = [] if ready else ["the script ended without opening the port"]
    if ready:
        problems += expect(termios.B4800, line.modes()[5], "speed")
        play(line, log)
    printed, others = script.finish()
    return printed, problems + others


FIELDS = [("DAY", "D", 8, 0), ("CLOCK", "C", 8, 0), ("LAT", "N", 18, 6), ("LON", "N", 18, 6), ("HEIGHT", "N", 18, 1),
          ("SATELLITES", "N", 18, 0)]


def check_run(printed, heard, before, table):
    summary = printed.rpartition("\r")[2].splitlines()[1:]
    wanted = [f"{name:<16}{figure}" for name, figure in (
        ("Sentences", heard.sentences), ("Damaged", heard.damaged), ("Without a fix", heard.without_fix),
        ("Fixes", len(heard.fixes)), ("Records before", before), ("Records now", before + len(heard.fixes)))]
    problems = expect(wanted, summary, "summary")
    progress = printed.split("\r")[1:]
    if heard.fixes and not any(f"{len(heard.fixes)} fixes, " in row for row in progress):
        problems.append("no progress line tells of the last fix")
    if any("\n" in row for row in progress[:-1]):
        problems.append("the progress is more than one line")
    fields, records = read_table(table)
    return problems + expect(FIELDS, fields, "fields") + compare_records(heard.fixes, records[before:])


def a_log_becomes_a_table(log, again=None):
    def run(runner, line):
        heard = Heard(log)
        printed, problems = listen(runner, line, log)
        problems += check_run(printed, heard, 0, line.folder / "fixes.dbf")
        if again is not None:
            printed, others = listen(runner, line, again)
            problems += others + check_run(printed, Heard(again), len(heard.fixes), line.folder / "fixes.dbf")
            problems += compare_records(heard.fixes, read_table(line.folder / "fixes.dbf")[1][:len(heard.fixes)])
        return problems
    return run


def a_file_that_is_no_table_stays(runner, line):
    (line.folder / "fixes.dbf").write_bytes(b"my notes")
    printed, problems = Script(runner, line, path="fixes.bas").finish()
    return (problems + expect("fixes.dbf is there but cannot be opened as a table.\n", printed, "printed")
            + expect(b"my notes", (line.folder / "fixes.dbf").read_bytes(), "file"))


def the_example_without_a_receiver_says_so(runner, line):
    (line.devices / "com1").unlink()
    printed, problems = Script(runner, line, path="fixes.bas").finish()
    return problems + expect("COM1 does not open: README.md says which device it is.\n", printed, "printed")


def the_log_is_what_its_maker_writes(example):
    def run(_, line):
        made = line.folder / "made.log"
        done = subprocess.run(["python3", str(example / "make_crossing.py"), str(made)], check=False)
        return (expect(0, done.returncode, "exit status")
                + expect((example / "crossing.log").read_bytes(), made.read_bytes(), "log"))
    return run


def receiver_tests(example):
    own = (example / "crossing.log").read_bytes()
    heard = Heard(own)
    # The figures that make_crossing.py says: guards against a reader here that finds nothing.
    if (heard.damaged, heard.without_fix, len(heard.fixes)) != (4, 6, 42):
        raise SystemExit(f"crossing.log: {heard.damaged} damaged, {heard.without_fix} without a fix, "
                         f"{len(heard.fixes)} fixes")
    yield "crossing.log is what make_crossing.py writes", the_log_is_what_its_maker_writes(example)
    yield "crossing.log, and some more into the same table", a_log_becomes_a_table(own, b"".join(sent_lines(own)[:16]))
    yield "a file that is no table stays as it is", a_file_that_is_no_table_stays
    yield "the example without a receiver says so", the_example_without_a_receiver_says_so
    walk = example.parent / "gps_track" / "walk.log"
    yield "walk.log", a_log_becomes_a_table(walk.read_bytes())
    data = os.environ.get("BRINDLE_TEST_DATA")
    for path in sorted((Path(data) / "nmea").glob("*.log")) if data else []:
        yield f"{path.name} (real receiver)", a_log_becomes_a_table(path.read_bytes())


def run_one(name, test, runner, example):
    with tempfile.TemporaryDirectory() as folder:
        for file in ("fixes.bas", "nmea.bas"):
            shutil.copy(example / file, folder)
        line = Line(folder)
        try:
            problems = test(runner, line)
        except (OSError, ValueError, struct.error, IndexError) as error:
            problems = [f"{type(error).__name__}: {error}"]
        finally:
            line.close()
    return name, problems


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--runner", required=True, help="path of the runner, or a command with arguments")
    parser.add_argument("--only", default="", help="run the tests whose name holds this")
    parser.add_argument("examples", type=Path)
    arguments = parser.parse_args()
    words = shlex.split(arguments.runner)
    words[0] = str(Path(words[0]).resolve()) if "/" in words[0] else words[0]
    runner = shlex.join(words)
    example = arguments.examples.resolve() / "gps_serial"

    tests = [(test.__name__, test) for test in INSTRUMENTS] + list(receiver_tests(example))
    tests = [(name, test) for name, test in tests if arguments.only in name]
    passed = failed = skipped = 0
    # The tests mostly wait.
    with concurrent.futures.ThreadPoolExecutor(max_workers=6) as pool:
        for future in [pool.submit(run_one, name, test, runner, example) for name, test in tests]:
            name, problems = future.result()
            print(("FAILED " if problems else "ok     ") + name)
            for problem in problems:
                print("    " + problem)
            failed += bool(problems)
            passed += not problems
    if not os.environ.get("BRINDLE_TEST_DATA"):
        skipped = 1
        print("skipped: BRINDLE_TEST_DATA is not set")
    print(f"{passed} passed, {failed} failed" + (f", {skipped} skipped" if skipped else ""))
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    raise SystemExit(main())
