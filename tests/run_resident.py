#!/usr/bin/env python3
"""Programs that stay resident, as the runner serves them.

The script tests get their whole input at once and cannot wait; here a program
is kept waiting at its prompts and behind its end while its timer ticks, and is
ended by the end of its input or by a signal.
"""

import argparse
import os
import select
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PATIENCE = 60.0 if os.environ.get("BRINDLE_SLOW_TESTS") else 15.0

TICKER = """event create ontimer tick
stayresident
global n
n = 0
timerstart %s
print "main ends"
end
sub tick(v)
  n = n + 1
  print "tick "; int(n); "["; v; "]"
endsub
"""


class Failure(Exception):
    pass


class Resident:
    """A runner with a script of its own, its input kept open."""

    def __init__(self, runner, program, *options):
        self.folder = tempfile.TemporaryDirectory(prefix="brindle-resident-")
        script = Path(self.folder.name) / "script.bas"
        script.write_text(program)
        self.process = subprocess.Popen([str(runner), "--ui=console", *options, str(script)], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.texts = {self.process.stdout: "", self.process.stderr: ""}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        for stream in (self.process.stdin, self.process.stdout, self.process.stderr):
            stream.close()
        self.folder.cleanup()

    @property
    def printed(self):
        return self.texts[self.process.stdout]

    @property
    def boxes(self):
        return self.texts[self.process.stderr]

    def _read(self, until):
        streams = [stream for stream in self.texts if not stream.closed]
        ready = select.select(streams, [], [], max(0.0, until - time.monotonic()))[0]
        ended = 0
        for stream in ready:
            data = os.read(stream.fileno(), 65536)
            self.texts[stream] += data.decode("utf-8", "backslashreplace")
            ended += not data
        return len(ready) > ended

    def wait_for(self, text, where="printed", patience=PATIENCE):
        until = time.monotonic() + patience
        while text not in getattr(self, where):
            if time.monotonic() > until or self.process.poll() is not None and not self._read(until):
                raise Failure("%r never came; printed %r, boxes %r, status %r" % (
                    text, self.printed, self.boxes, self.process.poll()))
            self._read(min(until, time.monotonic() + 0.5))

    def watch(self, seconds):
        until = time.monotonic() + seconds
        while time.monotonic() < until:
            self._read(until)

    def send(self, text):
        self.process.stdin.write(text.encode())
        self.process.stdin.flush()

    def end_input(self):
        self.process.stdin.close()

    def expect_exit(self, status):
        try:
            found = self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise Failure("still running; printed %r" % self.printed) from None
        for stream in self.texts:
            self.texts[stream] += stream.read().decode("utf-8", "backslashreplace")
        if found != status:
            raise Failure("exit status %r, expected %d; printed %r, boxes %r" % (found, status, self.printed, self.boxes))


def expect(condition, what):
    if not condition:
        raise Failure(what)


def serves_its_timer_until_the_input_ends(runner):
    with Resident(runner, TICKER % "20") as resident:
        resident.wait_for("tick 3[]")
        expect(resident.process.poll() is None, "it ended by itself")
        resident.end_input()
        resident.expect_exit(0)
        expect(resident.printed.startswith("main ends\ntick 1[]\ntick 2[]\ntick 3[]\n"), "printed %r" % resident.printed)
        expect(resident.boxes == "", "boxes %r" % resident.boxes)


def ends_at_a_signal(number):
    def check(runner):
        with Resident(runner, TICKER % "20") as resident:
            resident.wait_for("tick 2[]")
            resident.process.send_signal(number)
            resident.expect_exit(0)
            expect(resident.boxes == "", "boxes %r" % resident.boxes)
            expect(resident.printed.endswith("]\n"), "cut short: %r" % resident.printed)
    return check


def ends_at_once_without_input(runner):
    with Resident(runner, TICKER % "100000") as resident:
        resident.end_input()
        resident.expect_exit(0)
        expect(resident.printed == "main ends\n", "printed %r" % resident.printed)


def waits_without_a_timer(runner):
    with Resident(runner, 'stayresident\nprint "main ends"\n') as resident:
        resident.wait_for("main ends")
        resident.watch(0.3)
        expect(resident.process.poll() is None, "it ended by itself")
        resident.process.terminate()
        resident.expect_exit(0)


def lines_of_input_do_not_end_it(runner):
    with Resident(runner, TICKER % "20") as resident:
        resident.send("one\ntwo\n\n")
        resident.wait_for("tick 2[]")
        resident.end_input()
        resident.expect_exit(0)


def a_program_that_is_not_resident_ends(runner):
    with Resident(runner, (TICKER % "1").replace("stayresident\n", "")) as resident:
        resident.expect_exit(0)
        expect(resident.printed == "main ends\n", "printed %r" % resident.printed)


def the_second_period_counts(runner):
    with Resident(runner, (TICKER % "100000").replace('print "main', 'timerstart 20\nprint "main')) as resident:
        resident.wait_for("tick 3[]")
        resident.end_input()
        resident.expect_exit(0)
    with Resident(runner, (TICKER % "5").replace('print "main', 'timerstart 100000\nprint "main')) as resident:
        resident.wait_for("main ends")
        resident.watch(0.3)
        expect(resident.printed == "main ends\n", "the first timer ticks: %r" % resident.printed)


def a_timer_keeps_its_period(runner):
    with Resident(runner, TICKER % "200") as resident:
        resident.wait_for("main ends")
        start = time.monotonic()
        resident.wait_for("tick 4[]")
        took = time.monotonic() - start
        # Never early; how late is the machine's affair.
        expect(took > 0.7, "four ticks of 200 ms came after %.3f s" % took)


def a_handler_may_stop_the_timer(runner):
    program = (TICKER % "10").replace("endsub", "  if n = 2 then\n    timerstop\n  endif\nendsub")
    with Resident(runner, program) as resident:
        resident.wait_for("tick 2[]")
        resident.watch(0.2)
        resident.end_input()
        resident.expect_exit(0)
        expect(resident.printed == "main ends\ntick 1[]\ntick 2[]\n", "printed %r" % resident.printed)


def ticks_while_an_error_box_waits(runner):
    program = (TICKER % "20").replace("stayresident\n", "").replace('print "main', 'next\nprint "main')
    with Resident(runner, program, "--on-error=ask") as resident:
        resident.wait_for("Illegal NEXT statement.", "boxes")
        resident.wait_for("tick 3[]")
        resident.send("ok\n")
        resident.expect_exit(1)
        ticks, _, rest = resident.printed.partition("main ends\n")
        expect(ticks.startswith("tick 1[]\ntick 2[]\ntick 3[]\n"), "printed %r" % resident.printed)
        expect(rest == "", "it ticks behind the end: %r" % rest)


def an_error_in_a_handler_sets_the_status(runner):
    program = (TICKER % "20").replace("endsub", "  if n = 2 then\n    next\n  endif\nendsub")
    with Resident(runner, program, "--on-error=continue") as resident:
        resident.wait_for("tick 3[]")
        resident.end_input()
        resident.expect_exit(1)
        expect(resident.boxes == "Illegal NEXT statement.\n\n    next\n", "boxes %r" % resident.boxes)


def an_aborted_handler_leaves_the_timer_running(runner):
    program = (TICKER % "20").replace("endsub", '  next\n  print "not met"\nendsub')
    with Resident(runner, program, "--on-error=abort") as resident:
        resident.wait_for("tick 3[]")
        resident.process.send_signal(signal.SIGINT)
        resident.expect_exit(1)
        expect("not met" not in resident.printed, "printed %r" % resident.printed)


def an_aborted_run_stays_resident(runner):
    program = (TICKER % "20").replace('print "main', 'next\nprint "main')
    with Resident(runner, program, "--on-error=abort") as resident:
        resident.wait_for("tick 2[]")
        resident.end_input()
        resident.expect_exit(1)
        expect("main ends" not in resident.printed, "printed %r" % resident.printed)


def a_handler_sees_what_the_program_left(runner):
    program = """event create ontimer tick
global list[2], total
stayresident
open "notes.txt" for output as 1 text
type Count
  n as integer
endtype
dim c as Count
map create "m"
timerstart 10
end
sub tick(v)
  c.n = c.n + 1
  call mapset("m", "n", c.n)
  x = writeline(1, str(c.n))
  if c.n = 3 then
    close 1
    open "notes.txt" as 1 text
    print readline(1); " "; mapget("m", "n")
    close 1
    timerstop
  endif
endsub
"""
    with tempfile.TemporaryDirectory(prefix="brindle-resident-") as box:
        with Resident(runner, program.replace("notes.txt", box + "/notes.txt")) as resident:
            resident.wait_for("123 3\n")
            resident.end_input()
            resident.expect_exit(0)


CHECKS = [
    ("serves its timer until the input ends", serves_its_timer_until_the_input_ends),
    ("SIGTERM ends it with status 0", ends_at_a_signal(signal.SIGTERM)),
    ("SIGINT ends it with status 0", ends_at_a_signal(signal.SIGINT)),
    ("ends at once without input", ends_at_once_without_input),
    ("waits without a timer", waits_without_a_timer),
    ("lines of input do not end it", lines_of_input_do_not_end_it),
    ("a program that is not resident ends", a_program_that_is_not_resident_ends),
    ("the second period counts", the_second_period_counts),
    ("a timer keeps its period", a_timer_keeps_its_period),
    ("a handler may stop the timer", a_handler_may_stop_the_timer),
    ("ticks while an error box waits", ticks_while_an_error_box_waits),
    ("an error in a handler sets the status", an_error_in_a_handler_sets_the_status),
    ("an aborted handler leaves the timer running", an_aborted_handler_leaves_the_timer_running),
    ("an aborted run stays resident", an_aborted_run_stays_resident),
    ("a handler sees what the program left", a_handler_sees_what_the_program_left),
]


def main():
    parser = argparse.ArgumentParser(description="Checks how the runner serves resident programs.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    runner = parser.parse_args().runner.resolve()
    if not os.access(runner, os.X_OK):
        parser.error("no such runner")
    failed = 0
    for name, check in CHECKS:
        try:
            check(runner)
        except Failure as failure:
            failed += 1
            print("FAIL %s\n  %s" % (name, failure))
    print("%d passed, %d failed" % (len(CHECKS) - failed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
