#!/usr/bin/env python3
"""The interactive prompt, driven through a pseudo-terminal.

Usage: run_prompt.py --runner BRINDLE --source SOURCE_DIR

Each case types lines and waits for what they show. Standard output is a file, so that what scripts print is told from
what the prompt shows; both are checked.
"""

import argparse
import os
import pty
import re
import select
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import checks
from checks import check

LIMIT = 20.0
CTRL_C = "\x03"
CTRL_D = "\x04"
UP = "\x1b[A"
LEFT = "\x1b[D"


class Session:
    """A runner at a terminal of its own; `shown` is what the terminal got so far, without its control sequences."""

    def __init__(self, runner, folder, words=(), home=None):
        self.folder = folder
        self.out = folder / "out"
        environment = dict(os.environ, XDG_STATE_HOME=str(home or folder / "state"), TERM="xterm", LC_ALL="C.UTF-8")
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
            environment.pop(name, None)
        pid, self.terminal = pty.fork()
        if pid == 0:
            os.dup2(os.open(self.out, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o644), 1)
            os.chdir(folder)
            os.execve(runner, [runner, *words], environment)
        self.pid = pid
        self.shown = ""
        self.status = None

    def read(self, seconds):
        ready, _, _ = select.select([self.terminal], [], [], seconds)
        if not ready:
            return False
        try:
            data = os.read(self.terminal, 65536)
        except OSError:
            return False
        text = data.decode("utf-8", "replace")
        self.shown += re.sub(r"\x1b\[[0-9;?]*[A-Za-z]|\x1b[=>]", "", text).replace("\r", "")
        return bool(data)

    def wait_for(self, text, start=0):
        """Reads until `text` was shown behind `start`; where it ends, or -1."""
        deadline = time.monotonic() + LIMIT
        while time.monotonic() < deadline:
            found = self.shown.find(text, start)
            if found >= 0:
                return found + len(text)
            self.read(0.2)
        return -1

    def wait_for_prompt(self, start):
        deadline = time.monotonic() + LIMIT
        while time.monotonic() < deadline:
            if not re.search(r"(^|\n|\s)(> |\.\.\. )$", self.shown[start:]):
                self.read(0.2)
            elif not self.read(0.05):  # an editor that draws a line anew begins with the prompt as well
                return True
        return False

    def type(self, text):
        """Types, and waits until the next prompt is there."""
        start = len(self.shown)
        os.write(self.terminal, text.encode())
        if not self.wait_for_prompt(start):
            return None
        return self.shown[start:]

    def enter(self, *lines):
        answer = ""
        for line in lines:
            answer += self.type(line + "\r") or "(no prompt)"
        return answer

    def printed(self):
        return self.out.read_text(encoding="utf-8")

    def end(self):
        """Ctrl-D; the exit status."""
        try:
            os.write(self.terminal, CTRL_D.encode())
            deadline = time.monotonic() + LIMIT
            while time.monotonic() < deadline:
                pid, status = os.waitpid(self.pid, os.WNOHANG)
                if pid != 0:
                    self.pid = 0
                    return os.waitstatus_to_exitcode(status)
                self.read(0.05)
        finally:
            self.kill()
        return None

    def kill(self):
        if self.pid:
            os.kill(self.pid, signal.SIGKILL)
            os.waitpid(self.pid, 0)
            self.pid = 0
        os.close(self.terminal)


def entries(runner, folder):
    """Lines typed one by one, and what the script prints for them."""
    cases = [
        ("an expression shows its value", ["2 + 3"], "5.000000\n"),
        ("a text", ['"a" + "b"', '"a" ; "b"', '"a" + "b" : print "c" # d'], "ab\nab\nab\nc\n"),
        ("a call", ["len(\"four\")"], "4\n"),
        ("parentheses and signs", ["(1 + 1) * 3", "-int(7)"], "6.000000\n-7.000000\n"),
        ("variables stay", ["x = 4", "x", "x = x + 1", "x"], "4.000000\n5.000000\n"),
        ("arrays", ["dim a[3]", "a[1 + 1] = 7", "a[2]"], "7.000000\n"),
        ("statements", ['print "one" : print "two"'], "one\ntwo\n"),
        ("a block goes up to its end", ["for i = 1 to 3", "print int(i)", "next"], "1\n2\n3\n"),
        ("blocks inside blocks", ["n = 2", "do while n > 0", "if n = 2 then", 'print "two"', "else", 'print "one"',
                                  "endif", "n = n - 1", "loop"], "two\none\n"),
        ("words in texts and comments open nothing", ['print "if for do" # if for do', "rem if for"], "if for do\n"),
        ("a text may go over lines", ['print "a', 'b"'], "a\nb\n"),
        ("procedures stay callable", ["function twice(n)", "twice = n * 2", "endfunction", "twice(21)",
                                      "sub hello(name)", 'print "hello " ; name', "endsub", 'call hello("you")'],
         "42.000000\nhello you\n"),
        ("a procedure may be defined anew", ["function f(n)", "f = 1", "endfunction", "f(0)", "function f(n)", "f = 2",
                                             "endfunction", "f(0)"], "1.000000\n2.000000\n"),
        ("a record type", ["type point", "x as double", "endtype", "1"], "1.000000\n"),
        ("for behind open starts no loop", ['open "t.txt" for output as 1 text', 'writeline(1, "hi")', "close 1",
                                            'open "t.txt" for input as 1 text', "readline(1)", "close 1"], "1\nhi\n"),
        ("end ends the entry alone", ["end", "1 + 1"], "2.000000\n"),
        ("letters of other scripts", ['print "Grüße, δ"'], "Grüße, δ\n"),
        ("include", ["include \"part.bas\"", "fromfile"], "8.000000\n"),
    ]
    (folder / "part.bas").write_text("fromfile = 8\n", encoding="utf-8")
    for name, lines, expected in cases:
        session = Session(runner, folder)
        session.wait_for_prompt(0)
        shown = session.enter(*lines)
        status = session.end()
        printed = session.printed()
        check(name, printed == expected and status == 0, "printed %r, shown %r, status %r" % (printed, shown, status))


def errors(runner, folder):
    session = Session(runner, folder)
    session.wait_for_prompt(0)
    shown = session.enter("sub work(n)", "  next", "endsub", "x = 1", "call work(1)")
    check("an error shows the entry's name, its line and the calls",
          "Illegal NEXT statement." in shown and "entry 1:2:3\n 2 |   next\n   |   ^\n  in work, called at entry 3:1\n"
          in shown, repr(shown))
    shown = session.enter("y = left(\"a\")")
    check("the prompt goes on behind an error", "Incorrect number of function parameters" in shown, repr(shown))
    shown = session.enter("print int(x)")
    check("and what was there is there still", session.end() == 0 and session.printed() == "1\n", repr(shown))


def interruption(runner, folder):
    session = Session(runner, folder)
    session.wait_for_prompt(0)
    session.type("for i = 1 to 3\r")
    shown = session.type(CTRL_C)
    check("Ctrl-C abandons a block", shown is not None and shown.endswith("^C\n> "), repr(shown))
    os.write(session.terminal, b"print \"half")
    session.wait_for("half", len(session.shown) - 12)
    shown = session.type(CTRL_C)
    check("Ctrl-C abandons a line", shown is not None and shown.endswith("> "), repr(shown))
    shown = session.enter("print 1")
    check("nothing of it is run", session.end() == 0 and session.printed() == "1.000000\n",
          repr((shown, session.printed())))


def stopping(runner, folder):
    session = Session(runner, folder)
    session.wait_for_prompt(0)
    start = len(session.shown)
    os.write(session.terminal, b"started = 1 : do while 1 = 1 : a = 1 : loop\r")
    session.wait_for("loop\n", start)
    time.sleep(0.5)
    shown = session.type(CTRL_C)
    check("Ctrl-C stops what runs", shown is not None and shown.endswith("> "), repr(shown))
    shown = session.enter("print int(started)")
    check("and the prompt goes on", session.end() == 0 and session.printed() == "1\n",
          repr((shown, session.printed())))


def timers(runner, folder):
    session = Session(runner, folder)
    session.wait_for_prompt(0)
    session.enter("sub OnTimer(n)", 'print "tick"', "endsub", "event create ontimer OnTimer", "timerstart 50")
    deadline = time.monotonic() + LIMIT
    while "tick\ntick\n" not in session.printed() and time.monotonic() < deadline:
        session.read(0.1)
    check("timers tick while the prompt waits", "tick\ntick\n" in session.printed(), repr(session.shown))
    session.enter("timerstop")
    check("and the session ends", session.end() == 0)


def editing(runner, folder):
    home = folder / "history home"
    session = Session(runner, folder, home=home)
    session.wait_for_prompt(0)
    session.enter('print "first"')
    session.type('print "scond"' + LEFT * 5 + "e\r")
    check("lines are edited", session.printed() == "first\nsecond\n", repr(session.printed()))
    session.type(UP + UP + "\r")
    check("lines are remembered", session.printed() == "first\nsecond\nfirst\n", repr(session.printed()))
    check("the session ends", session.end() == 0)
    history = home / "brindle" / "history"
    check("the history is private", history.exists() and history.stat().st_mode & 0o077 == 0, str(history))
    session = Session(runner, folder, home=home)
    session.wait_for_prompt(0)
    session.type(UP + "\r")
    check("and remembered by the next session", session.end() == 0 and session.printed() == "first\n",
          repr(session.printed()))


def without_terminal(runner, folder):
    for words in ([], ["--ui=console"], ["run"]):
        done = subprocess.run([runner, *words], stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
                              cwd=folder)
        check("without a terminal %r is a fault of usage" % words,
              done.returncode == 2 and "SCRIPT is required" in done.stderr and done.stdout == "",
              repr((done.returncode, done.stderr)))
    session = Session(runner, folder, words=["run"])
    session.wait_for("SCRIPT is required")
    check("the command run wants its script on a terminal too", "SCRIPT is required" in session.shown, session.shown)
    session.kill()


def words_agree(source):
    """The prompt tells statements by their words: they are the language's."""
    table = (source / "src/interpreter/word_tables.cpp").read_text(encoding="utf-8")
    language = re.findall(r'Word<COMMAND_TYPE>\{u"(\w+)"', table)
    entry = (source / "tools/brindle/entry.cpp").read_text(encoding="utf-8")
    list_text = entry[entry.index("kCommands = {"):]
    own = re.findall(r'"(\w+)"', list_text[:list_text.index("};")])
    check("the prompt knows the language's words", len(language) > 40 and own == language,
          str(set(own) ^ set(language)))


def loads_nothing(runner, folder):
    """A script that is run pays nothing for the prompt."""
    linked = subprocess.run(["ldd", runner], capture_output=True, text=True, check=False).stdout
    check("the runner is not linked with libedit", "libbrindle" in linked and "libedit" not in linked, linked)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True)
    parser.add_argument("--source", required=True, type=Path)
    options = parser.parse_args()
    runner = str(Path(options.runner).resolve())
    version = subprocess.run([runner, "--version"], capture_output=True, text=True, check=False).stdout
    with tempfile.TemporaryDirectory(prefix="brindle-prompt-") as box:
        folder = Path(box)
        entries(runner, folder)
        errors(runner, folder)
        interruption(runner, folder)
        stopping(runner, folder)
        timers(runner, folder)
        without_terminal(runner, folder)
        loads_nothing(runner, folder)
        if "line editing: none" in version:
            print("libedit is not there: editing and history are not tested")
        else:
            editing(runner, folder)
    words_agree(options.source.resolve())
    return checks.status()


if __name__ == "__main__":
    sys.exit(main())
