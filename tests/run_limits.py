#!/usr/bin/env python3
"""The options of the runner that limit a script, and a host that lets itself be interrupted."""

import argparse
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ENDLESS = "do while 1 = 1\nn = 1\nloop\n"
GROWING = 'x = "abcdefgh"\ndo while 1 = 1\nx = x + x\nloop\n'
DEEP = "call down()\nend\nsub down()\ncall down()\nendsub\n"
FORBIDDEN = {
    "runexe": 'runexe "/bin/true"\n',
    "externals": 'declare sub f lib "x" (byval a as integer)\n',
    "automation": 'x = createobject("Brindle.FileSystem")\n',
    "serial": "x = comportopen(999)\n",
}
ROUTES = ("parser", "auto", "eager", "eager:3")


class Checks:
    def __init__(self, runner, folder):
        self.runner = runner
        self.folder = folder
        self.failures = 0

    def run(self, program, *options, stdin=b"", name="script.bas"):
        script = self.folder / name
        script.write_text(program)
        return subprocess.run([self.runner, "--ui=console", *options, str(script)], input=stdin, capture_output=True,
                              timeout=60, check=False)

    def expect(self, what, result, status, error=None, output=None):
        stderr = result.stderr.decode()
        right = (result.returncode == status and (error is None or stderr.startswith(error))
                 and (output is None or result.stdout.decode() == output))
        if not right:
            self.failures += 1
            print(f"FAILED {what}: status {result.returncode}\n{result.stdout!r}\n{stderr}")


def check_budgets(checks):
    for route in ROUTES:
        route = f"--route={route}"
        checks.expect("statements", checks.run(ENDLESS, route, "--max-statements=1000"), 1,
                      "Limit of statements reached\n")
        checks.expect("seconds", checks.run(ENDLESS, route, "--max-seconds", "0.1"), 1, "Limit of time reached\n")
        checks.expect("memory", checks.run(GROWING, route, "--max-memory", "4"), 1, "Limit of memory reached\n")
        checks.expect("depth", checks.run(DEEP, route, "--max-depth", "20"), 1, "Limit of nested calls reached\n")
    # An answer of OK to errors does not keep a run alive.
    checks.expect("continue", checks.run(ENDLESS, "--on-error=continue", "--max-statements=10"), 1,
                  "Limit of statements reached\n")
    checks.expect("enough", checks.run('print "a"\n', "--max-statements=1", "--max-seconds=30", "--max-memory=1",
                                       "--max-depth=1"), 0, "", "a\n")


def check_wait(checks):
    """The time runs out while a prompt waits for input that never comes."""
    for program in ('x = ask("?")\nprint "never"\n',
                    'dialog "d", 0, 0, 100, 50\ncontrol okbutton "OK", 1, 1, 1, 20, 10\nenddialog\nprint "never"\n'):
        script = checks.folder / "wait.bas"
        script.write_text(program)
        begin = time.monotonic()
        process = subprocess.Popen([checks.runner, "--ui=console", "--max-seconds=0.3", str(script)],
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        try:
            status = process.wait(timeout=30)
        except subprocess.TimeoutExpired:
            process.kill()
            status = "no end"
        printed = process.stdout.read().decode()
        boxes = process.stderr.read().decode()
        for stream in (process.stdin, process.stdout, process.stderr):
            stream.close()
        process.wait()
        if status != 1 or "Limit of time reached\n" not in boxes or printed or time.monotonic() < begin + 0.3:
            checks.failures += 1
            print(f"FAILED a wait: {status}\n{printed}\n{boxes}")


def check_outside(checks):
    root = checks.folder / "root"
    root.mkdir()
    (root / "in.txt").write_text("inside\n")
    (checks.folder / "out.txt").write_text("outside\n")
    (root / "link.txt").symlink_to("../out.txt")
    program = 'open "%s" for input as 1 text\nprint readline(1)\n'
    inside = f"--root={root}"
    checks.expect("inside", checks.run(program % "\\in.txt", inside), 0, "", "inside\n")
    for path in ("..\\out.txt", "link.txt", "\\..\\out.txt"):
        checks.expect(path, checks.run(program % path, inside), 1, "Not allowed\n", "")
    checks.expect("absolute", checks.run(program % (checks.folder / "out.txt"), inside), 1, "File does not exist\n", "")
    checks.expect("no root", checks.run('print "x"\n', f"--root={root}/nowhere"), 1, "brindle: no such folder", "")
    for name, statement in FORBIDDEN.items():
        checks.expect(name, checks.run(statement, f"--forbid={name}"), 1, "Not allowed\n")
    checks.expect("all", checks.run("".join(FORBIDDEN.values()) + 'print "end"\n', "--on-error=continue",
                                    "--forbid=" + ",".join(FORBIDDEN)), 1, "Not allowed\n", "end\n")


def check_interruption(checks, host):
    """A signal handler of the host ends a script that waits for an answer."""
    root = checks.folder / "guest"
    root.mkdir()
    script = root / "waits.bas"
    script.write_text('print "asking"\nx = ask("Go on?")\nprint "never"\n')
    process = subprocess.Popen([host, root, script], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE)
    prompt = process.stderr.readline()  # the handler is there by now
    process.send_signal(signal.SIGINT)
    printed = process.stdout.read()  # the input stays open
    status = process.wait(timeout=60)
    process.stdin.close()
    if (status, prompt, printed) != (0, b"Go on? [y/n]:\n", b"asking\nlast error: Stopped by the host\n"):
        checks.failures += 1
        print(f"FAILED an interruption: {status}\n{prompt!r}\n{printed!r}")


def check_usage(checks):
    for option in ("--max-statements=0", "--max-statements=x", "--max-seconds=0", "--max-seconds=-1", "--max-memory=0",
                   "--max-depth=0", "--root=", "--forbid=files"):
        checks.expect(option, checks.run('print "x"\n', option), 2, output="")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runner", required=True, type=Path)
    parser.add_argument("--host", type=Path, help="examples/untrusted")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="brindle-limits-") as folder:
        checks = Checks(arguments.runner.resolve(), Path(folder))
        for check in (check_budgets, check_wait, check_outside, check_usage):
            check(checks)
        if arguments.host:
            check_interruption(checks, arguments.host.resolve())
    print("failed" if checks.failures else "passed")
    return 1 if checks.failures else 0


if __name__ == "__main__":
    sys.exit(main())
