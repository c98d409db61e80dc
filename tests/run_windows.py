#!/usr/bin/env python3
"""Runs scripts in windows through the runner: which user interface it takes, exit status, residents, signals.

    run_windows.py --runner PATH [--startup]

Nothing is shown: the platform is Qt's "offscreen", and windows are closed by timers. --startup measures instead what
the plug-in costs a script that needs no window.
"""
import argparse
import os
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import checks
from checks import check

TIMEOUT_SECONDS = 30
CLOSES_ITSELF = """event create OnTimer tick
timerstart 20
dialog "T", 0, 0, 100, 50
  control edittext "", 10, 0, 0, 50, 12
enddialog
end
sub tick(v)
  timerstop
  closedialog
endsub
"""
RESIDENT = """event create OnTimer tick
global count
count = 0
timerstart 10
stayresident
end
sub tick(v)
  {body}
endsub
"""


class Runner:
    def __init__(self, path, folder):
        self.path, self.folder = path, folder
        self.plain = {key: value for key, value in os.environ.items()
                      if key not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "BRINDLE_PLUGINS")}
        self.plain["XDG_RUNTIME_DIR"] = str(folder)

    def start(self, script, *options, path=None, **environment):
        (self.folder / "script.bas").write_text(script, encoding="utf-8")
        return subprocess.Popen([str(path or self.path), *options, "script.bas"], cwd=self.folder,
                                env=dict(self.plain, **environment), stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def run(self, script, *options, **environment):
        process = self.start(script, *options, **environment)
        try:
            out, error = process.communicate(timeout=TIMEOUT_SECONDS)
        except subprocess.TimeoutExpired:
            process.kill()
            out, error = process.communicate()
            error += "\nstill running"
        notes = ("This plugin does not support",)
        return process.returncode, out, "".join(line + "\n" for line in error.splitlines()
                                                if not line.startswith(notes))


def check_choice(runner):
    status, out, error = runner.run("x = 1", "--ui=window")
    check("without a display --ui=window is a usage error",
          status == 2 and error.startswith("brindle: no window can be shown: no display"), error)
    status, out, error = runner.run('print "here"', "--ui=auto")
    check("without a display --ui=auto is the console", (status, out, error) == (0, "here\n", ""), error)
    status, out, error = runner.run("x = 1", "--ui=window", DISPLAY=":98765")
    check("a display that nobody answers at is named", status == 2 and ":98765 cannot be reached" in error, error)
    status, out, error = runner.run('print "here"', "--ui=auto", DISPLAY=":98765")
    check("a display that nobody answers at leaves the console", (status, out) == (0, "here\n"), error)
    status, out, error = runner.run(CLOSES_ITSELF, "--ui=auto", QT_QPA_PLATFORM="offscreen")
    check("with a platform of its own --ui=auto is a window", (status, out, error) == (0, "", ""), error)
    status, out, error = runner.run(CLOSES_ITSELF, "--ui=window", QT_QPA_PLATFORM="offscreen",
                                    BRINDLE_PLUGINS=str(runner.folder))
    check("a folder of plug-ins without this one is passed over", (status, out, error) == (0, "", ""), error)


def check_missing(runner):
    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        shutil.copy(runner.path, scratch / "brindle")
        for library in runner.path.parent.glob("libbrindle.so*"):
            shutil.copy(library, scratch, follow_symlinks=True)
        alone = {"path": scratch / "brindle", "LD_LIBRARY_PATH": str(scratch), "QT_QPA_PLATFORM": "offscreen"}
        status, out, error = runner.run("x = 1", "--ui=window", **alone)
        check("a missing plug-in is named", status == 2 and "libbrindle-qt.so: not found" in error, error)
        status, out, error = runner.run('print "here"', "--ui=auto", **alone)
        check("a missing plug-in leaves the console", (status, out, error) == (0, "here\n", ""), error)
        (scratch / "libbrindle-qt.so").write_text("no library")
        status, out, error = runner.run("x = 1", "--ui=window", **alone)
        check("a plug-in that is no library is refused", status == 2 and error.count("\n") == 1, error)


def check_runs(runner):
    window = ("--ui=window", "--on-error=continue")
    offscreen = {"QT_QPA_PLATFORM": "offscreen"}
    status, out, error = runner.run(CLOSES_ITSELF, *window, **offscreen)
    check("a dialog runs and ends", (status, out, error) == (0, "", ""), error)
    status, out, error = runner.run("next", *window, **offscreen)
    check("an error makes the status 1 and goes to stderr where nobody is asked",
          (status, error) == (1, "Illegal NEXT statement.\nnext\n"), f"{status} {error!r}")
    status, out, error = runner.run(RESIDENT.format(body="count = count + 1\nif count = 3 then\ntimerstop\nendif"),
                                    *window, **offscreen)
    check("a resident ends when no timer runs", (status, error) == (0, ""), f"{status} {error}")
    status, out, error = runner.run("stayresident", *window, **offscreen)
    check("a resident without a timer ends at once", (status, error) == (0, ""), f"{status} {error}")
    for number in (signal.SIGTERM, signal.SIGINT):
        for body in ("count = count + 1", 'timerstop\ndialog "T", 0, 0, 50, 50\nenddialog'):
            ready = runner.folder / "ready"
            ready.unlink(missing_ok=True)
            mark = 'open "ready" for output as 1\nclose 1\n'
            process = runner.start(RESIDENT.format(body=mark + body), *window, **offscreen)
            deadline = time.monotonic() + TIMEOUT_SECONDS
            while not ready.exists() and time.monotonic() < deadline:
                time.sleep(0.01)
            time.sleep(0.1)
            process.send_signal(number)
            try:
                process.communicate(timeout=TIMEOUT_SECONDS)
            except subprocess.TimeoutExpired:
                process.kill()
                process.communicate()
            check(f"{number.name} ends a resident ({body.split()[0]})", process.returncode == 0, process.returncode)


def measure_startup(runner, runs=200):
    """The time of a trivial script on the console, with the plug-in beside the library and without it."""
    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        shutil.copy(runner.path, scratch / "brindle")
        for library in runner.path.parent.glob("libbrindle*.so*"):
            shutil.copy(library, scratch, follow_symlinks=True)
        (scratch / "script.bas").write_text("x = 1\n")
        plug_in, moved = scratch / "libbrindle-qt.so", scratch / "moved-away"
        environment = dict(runner.plain, LD_LIBRARY_PATH=str(scratch))
        times = {True: [], False: []}
        # By turns, so that both see the same machine.
        for turn in range(2 * runs):
            present = turn % 2 == 0
            (moved if present else plug_in).exists() and (moved.rename(plug_in) if present else plug_in.rename(moved))
            start = time.perf_counter()
            subprocess.run([str(scratch / "brindle"), "--ui=console", "script.bas"], cwd=scratch, env=environment,
                           check=True)
            times[present].append(1000 * (time.perf_counter() - start))
    for present, name in ((True, "present"), (False, "moved away")):
        print(f"plug-in {name}: median {statistics.median(times[present]):.2f} ms, "
              f"best {min(times[present]):.2f} ms, {runs} runs")


def main():
    parser = argparse.ArgumentParser(description="Runs scripts in windows through the runner.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    parser.add_argument("--startup", action="store_true", help="measure the start of a console script")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        folder.chmod(0o700)
        runner = Runner(arguments.runner.resolve(), folder)
        if arguments.startup:
            measure_startup(runner)
            return 0
        check_choice(runner)
        check_missing(runner)
        check_runs(runner)
    return checks.status()


if __name__ == "__main__":
    sys.exit(main())
