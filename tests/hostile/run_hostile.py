#!/usr/bin/env python3
"""Feeds the runner programs that nobody would write.

Whatever a script holds, the runner ends in time, by itself, and with status
0 or 1; where the program cannot be right, an error stands on stderr.  Each
case runs alone in a fresh folder, with little memory (unless the runner is
built with a sanitizer, which maps a lot) and the usual 8 MiB of stack.
"""

import argparse
import concurrent.futures
import os
import random
import re
import resource
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

TIME_LIMIT = 20
SLOW_TIME_LIMIT = 120
MEMORY_LIMIT = 2 * 1024 ** 3
STACK_LIMIT = 8192 * 1024
MEGABYTE = 1024 * 1024
# What a sanitizer ends the runner with: neither 0 nor 1.
SANITIZER_STATUS = 99

SOURCE_FOLDER = Path(__file__).resolve().parent.parent.parent

ERROR_17 = "Not enough memory to load source file"
ERROR_50 = "Brindle unrecoverable error"


class Case:
    """One program, and what is to be seen of it."""

    def __init__(self, name, program=b"", error=None, output=None, files=None, prepare=None, script="case.bas",
                 options=(), lines=None):
        self.name = name
        self.program = program.encode() if isinstance(program, str) else program
        self.error = error        # True: some error; a text: this one; False: none; None: either
        self.output = output      # what has to be printed, None: anything
        self.files = files or {}  # further files
        self.prepare = prepare    # makes what is no plain file, given the folder
        self.script = script
        self.options = list(options)
        self.lines = lines        # what the user types, None: nothing


def repeated():
    """A megabyte of one character or a few."""
    faulty = ['"', "_", ".", "\\", "if ", "f(", "a=", "a[", "1", "1^", "1+", "print (", "print -", "print f(",
              "x=f(", "if 1=1 then x=", "dim a[", "call ", "call f(", "next ", "goto ", "function ", "sub ",
              "a.b ", "a.b(", "x=a.b(", "return ", "as ", "open ", "close ", "throw ", "event ", "watch ", "é"]
    harmless = ["(", "^", "[", "-", ")", "]", ":", "\n", "\r", "\r\n", " ", "\t", "\0", "#", "rem ", "then ",
                "end ", "loop ", "a:b:", "$", "print ", "endif "]
    undecided = ["a", "é:", "for ", "do ", "do while ", "else ", "for i=1 to 2 ", "if 1=1 then ", "if 1=2 then ",
                 "type ", "map ", "dialog ", "alter ", "declare ", "run ", "library ", "include ", "encrypt ",
                 "\xff", "\n\"", "print \"", "timerstart ", "propertysheet ", "page ", "x=1 ", "é=1 "]
    for words, error in ((faulty, True), (harmless, False), (undecided, None)):
        for word in words:
            text = word * (MEGABYTE // len(word))
            # A label twice is a fault; a variable that is a million letters long is none.
            wanted = True if word == "a:b:" else error
            yield Case("repeated %r" % word, text, error=wanted)
    for byte in (b"\x80", b"\xff", b"\xc3", b"\xf0\x9f", b"\xff\xfe"):
        yield Case("repeated %r" % byte, byte * (MEGABYTE // len(byte)))


def noise():
    """Ten megabytes without sense."""
    size = 10 * MEGABYTE
    for seed in (1, 2, 3):
        yield Case("random bytes %d" % seed, random.Random(seed).randbytes(size))
        printable = bytes(range(32, 127)) + b"\n\t"
        table = bytes(printable[i % len(printable)] for i in range(256))
        yield Case("random characters %d" % seed, random.Random(seed).randbytes(size).translate(table))
        yield Case("random characters in lines %d" % seed, lines_of(random.Random(seed), size, table))
        yield Case("random words %d" % seed, soup(random.Random(seed), size, words()), options=())
        yield Case("random words and no cancel %d" % seed, soup(random.Random(seed), MEGABYTE, words(loops=False)),
                   options=["--on-error=continue"])


def lines_of(source, size, table):
    noise_bytes = bytearray(source.randbytes(size).translate(table))
    for position in range(0, size, 61):
        noise_bytes[position] = 10
    return bytes(noise_bytes)


def vocabulary():
    """All words of the language; those of functions with their parenthesis."""
    text = (SOURCE_FOLDER / "src/interpreter/word_tables.cpp").read_text(encoding="utf-8")
    found = re.findall(r'_TYPE>\{u"(\w+)"', text)
    text = (SOURCE_FOLDER / "src/interpreter/function_table.cpp").read_text(encoding="utf-8")
    found += [name + "(" for name in re.findall(r'BuiltIn\{u"(\w+)"', text)]
    if len(found) != 49 + 50 + 86:
        raise SystemExit("the tables of words are not where they were: %d words" % len(found))
    return found


def words(loops=True):
    """The words of the language, but for those that would start programs or load libraries."""
    outward = {"runexe", "declare", "lib", "playsound", "comportopen("}
    endless = {"do", "loop", "for", "next", "goto", "run", "call", "throw", "timerstart", "include", "library"}
    taken = [word for word in vocabulary() if word not in outward and (loops or word not in endless)]
    operands = ["a", "b", "c", "list", "x.y", "r.f(", "f(", "1", "2.5", "0", "-1", '"text"', '""', '"no.txt"', "label:",
                "True", "Nothing"]
    signs = list("()[]=+-*/^%<>,;:!~#'&_.\\") + ["=>", "<=", "<>", "\n", "\n", "\n", "\n"]
    return taken + operands * 4 + signs * 3


def soup(source, size, vocabulary):
    text = " ".join(source.choices(vocabulary, k=size // 4))
    return text[:size]


def nested():
    """Nesting beyond any stack."""
    deep = 100_000
    down = "\nend\nfunction down(n)\nif n = 0 then\ndown = 0\nelse\ndown = %s\nendif\nendfunction\n"
    deepest = 4 * deep  # a parenthesis takes little stack, and a sanitized runner gets more of it
    yield Case("nested parentheses", "x = " + "(" * deepest + "1" + ")" * deepest + "\n", error=ERROR_50)
    yield Case("nested parentheses that never close", "x = " + "(" * deepest, error=ERROR_50)
    yield Case("ten thousand nested parentheses", "x = " + "(" * 10_000 + "1" + ")" * 10_000 + "\nprint int(x)\n",
               error=None)
    yield Case("nested powers", "x = " + "2^" * (10 * deep) + "2\n", error=ERROR_50)
    yield Case("nested indices", "dim a[2]\nx = " + "a[" * deep + "0" + "]" * deep + "\n", error=ERROR_50)
    yield Case("nested calls of a built-in", "x = " + "len(" * deep + '"a"' + ")" * deep + "\n", error=ERROR_50)
    yield Case("nested calls in a condition", "if " + "abs(" * deep + "1" + ")" * deep + " = 1 then\n", error=ERROR_50)
    yield Case("nested branches", "if 1 = 1 then\n" * deep + 'print "in"\n' + "endif\n" * deep, error=False, output="in\n")
    yield Case("nested branches that are skipped", "if 1 = 2 then\n" * deep + "endif\n" * deep + 'print "out"\n',
               error=False, output="out\n")
    yield Case("loops inside each other", "".join("for v%d = 1 to 1\n" % i for i in range(deep)) + 'print "in"\n' +
               "next\n" * deep, error=False, output="in\n")
    yield Case("a chain of sums", "x = 0" + " + 1" * deep + "\nprint int(x)\n", error=False, output="%d\n" % deep)
    yield Case("a million calls deep", "print down(1000000)" + down % "down(n - 1) + 1", error=ERROR_50)
    yield Case("a million calls deep by call", "call down(1)\nend\nsub down(n)\ncall down(n + 1)\nendsub\n", error=ERROR_50)
    yield Case("calls without end, answered by OK", "call down(1)\nend\nsub down(n)\ncall down(n + 1)\nendsub\n",
               error=ERROR_50, options=["--on-error=continue"])
    yield Case("two thousand calls deep", "print int(down(2000))" + down % "down(n - 1) + 1", error=False, output="2000\n")
    yield Case("two thousand calls deep inside arguments and parentheses",
               "print int(down(2000))" + down % "max(0, ((abs(int(down(n - 1)) + 1))))", error=False, output="2000\n")
    yield Case("two thousand calls deep by call",
               "global g\ng = 0\ncall down(2000)\nprint int(g)\nend\nsub down(n)\nif n => 1 then\ng = g + 1\n"
               "call down(n - 1)\nendif\nendsub\n", error=False, output="2000\n")


def composed():
    """Scripts that name themselves and each other."""
    yield Case("a script that runs itself", 'run "case.bas"\n', error=ERROR_50)
    yield Case("scripts that run each other", 'run "other.bas"\n', error=ERROR_50, files={"other.bas": 'run "case.bas"\n'})
    yield Case("a script that includes itself", 'include "case.bas"\nend\n', error="Syntax error")
    yield Case("files that include each other", 'include "a.bas"\nend\n', error="Syntax error",
               files={"a.bas": 'include "b.bas"\n', "b.bas": 'include "a.bas"\n'})
    yield Case("files that include each other under two names", 'include "a.bas"\nend\n', error="Syntax error",
               files={"a.bas": 'include "./b.bas"\n', "b.bas": 'include "././a.bas"\n'},
               options=["--on-error=continue"])
    yield Case("libraries that name each other", 'library "a.bas"\nprint "on"\nend\n', error=False, output="on\n",
               files={"a.bas": 'library "b.bas"\n', "b.bas": 'library "a.bas"\nlibrary "case.bas"\n'})
    doubling = {"f%d.bas" % i: ('include "f%d.bas"\n' % (i + 1)) * 2 for i in range(40)}
    doubling["f40.bas"] = "x = 1\n"
    yield Case("includes that double at every step", 'include "f0.bas"\nend\n', error=ERROR_17, files=doubling,
               options=["--on-error=continue"])


def large():
    """Much of everything."""
    many = 200_000
    lines = 100_000
    yield Case("100000 lines of sums", "x = 0\n" + "".join("x = x + %d\n" % (i % 7) for i in range(lines)) +
               "print int(x)\n", error=False, output="%d\n" % sum(i % 7 for i in range(lines)))
    yield Case("100000 lines that are called", "n = 0\nfor i = 1 to 3\nn = n + Add()\nnext\nprint int(n)\nend\n"
               "function Add()\ns = 0\n" + "s = s + 1\n" * lines + "Add = s\nendfunction\n", error=False,
               output="%d\n" % (3 * lines))
    fill = 'dim a[16000]\ns = repeat("0123456789", %d)\nfor i = 0 to 15999\na[i] = s%s\nnext\n'
    yield Case("arrays of 16000 long texts", fill % (400, "") +
               "b = a\ndim c[16000]\nc = Back(a)\nn = 0\nfor i = 0 to 15999\nn = n + len(c[i])\nnext\nprint int(n)\n"
               'print ubound("c")\nend\nfunction Back(x)\nBack = x\nendfunction\n', error=False,
               output="64000000\n16000\n")
    yield Case("an array of 16000 texts beyond memory", fill % (20_000, ' + "x"') + "print 1\n")
    yield Case("an array of 16001", "dim a[16001]\n", error="Incorrect array size")
    yield Case("200000 labels", "goto L%d\n" % (many - 1) + "".join("L%d:\n" % i for i in range(many)) + 'print "there"\n',
               error=False, output="there\n")
    yield Case("200000 procedures", "print f%d()\nend\n" % (many - 1) +
               "".join("function f%d()\nf%d = \"r\"\nendfunction\n" % (i, i) for i in range(many)), error=False, output="r\n")
    yield Case("200000 variables", "".join("v%d = %d\n" % (i, i) for i in range(many)) + "print int(v%d)\n" % (many - 1),
               error=False, output="%d\n" % (many - 1))
    yield Case("200000 definitions of one name", "end\n" + "sub f()\nendsub\n" * many, error="Duplicate function definition")
    yield Case("one line of ten megabytes", 'x = 1 : ' * (10 * MEGABYTE // 8) + 'print "end"\n', error=False, output="end\n")
    yield Case("a literal of ten megabytes", 'x = "' + "é" * (5 * MEGABYTE) + '"\nprint len(x)\n', error=False,
               output="%d\n" % (5 * MEGABYTE))
    yield Case("a number of a megabyte", "x = " + "1" * MEGABYTE + "\nprint 1\n", error=False, output="1.000000\n")
    yield Case("a million decimals", "x = 0." + "1" * MEGABYTE + "\nprint x\n", error=False, output="0.111111\n")
    yield Case("texts that grow without end", 'x = "abcd"\ndo while 1 = 1\nx = x + x\nloop\n', error=ERROR_50)
    yield Case("a text repeated beyond memory", 'x = repeat("abcdefgh", 2000000000)\n', error=ERROR_50)
    yield Case("a width beyond memory", 'x = format(1, "%2000000000d")\n', error=ERROR_50)
    yield Case("a power that takes a billion steps", "x = 1.0000001 ^ 1000000000\nprint 1\n", error=False, output="1.000000\n")


CLOSE_TABLE = """
dim f[3]
f[0] = "N"
f[1] = "C"
f[2] = 10
h = dbfcreate("t", f)
x = dbfappend(h, "first")
%s
end
function Shut(n)
  x = dbfclose(n)
  Shut = 0
endfunction
"""
CLOSE_FILE = """
open "t.txt" for output as 1 text
x = writeline(1, "first")
close 1
open "t.txt" for input as 1 text
%s
end
function Shut(n)
  close n
  Shut = 0
endfunction
"""
PRESSED = """
dialog "One", 0, 0, 100, 40
  control button "Go", 11, 1, 1, 20, 10, "Pressed"
  control okbutton "OK", 1, 1, 20, 20, 10
  onexit Closed
enddialog
print "after"
end
sub Closed(r)
  closedialog
  print "closed ";r
endsub
sub Pressed(v)
%s
endsub
"""


def torn_away():
    """What a handler or an operand takes away from the statement that waits for it."""
    error_49 = "Invalid file handle"
    going_on = ["--on-error=continue"]
    for operation, printed in (("r = dbfread(h + Shut(h))\nprint \"[\";r;\"]\"", "[]\n"), ("print dbfappend(h, Shut(h))", "0\n"),
                               ("print dbfwrite(h, 0, Shut(h))", "0\n"), ("print dbfnumrecords(h + Shut(h))", "0\n"),
                               ("print dbfclose(h + Shut(h))", "False\n")):
        yield Case("a table closed by an operand of %s" % operation.partition("(")[0], CLOSE_TABLE % operation, error=False,
                   output=printed)
    yield Case("a table closed by an operand, and the next one has its handle",
               CLOSE_TABLE % 'k = dbfcreate("k", f)\nprint dbfappend(h, Shut(h))\nprint dbfnumrecords(0)', error=False,
               output="True\n1\n")
    for operation in ("readline(1 + Shut(1))", "read(1, Shut(1) + 1, 1)", 'readlist(1, str(Shut(1)))', "filesize(1 + Shut(1))",
                      "seek(1, Shut(1))", 'writeline(1, Shut(1))', "iseof(1 + Shut(1))"):
        yield Case("a file closed by an operand of %s" % operation, CLOSE_FILE % ("x = %s\n" % operation), error=error_49)
    yield Case("a file replaced while its number is read", CLOSE_FILE.replace("close n", 'open "case.bas" for input as 1 text') %
               "print len(readline(1 + Shut(1)))", error=False, output="0\n")
    yield Case("a port closed by an operand of its own writing", "x = comportopen(1)\nx = comportwrite(1, Shut(1))\n"
               'print "[";x;"]"\nend\nfunction Shut(n)\nx = comportclose(n)\nShut = "x"\nendfunction\n', error=False,
               output="[]\n")
    yield Case("a map emptied by an operand of its own statement", 'map create "m"\ncall mapset("m", "a", 1)\n'
               'k = mapgetkeys("m")\ncall mapset("m", "c", Wipe())\nprint maphas("m", "a");maphas("m", "c")\nend\n'
               'function Wipe()\nmap clear "m"\nWipe = 1\nendfunction\n', error=False, output="FalseTrue\n")
    yield Case("an array made smaller by an operand of its own index", "dim a[1000]\na[900 + Shrink()] = 1\nprint 1\nend\n"
               "function Shrink()\nShrink = 0\nendfunction\n".replace("Shrink = 0", "dim a[2]\nShrink = 0"), error=None,
               options=going_on)
    yield Case("an array made smaller while its value is read", "global a\ndim b[1000]\na = b\nx = a[5] + Shrink() + a[900]\n"
               "print 1\nend\nfunction Shrink()\nglobal a[2]\nShrink = 0\nendfunction\n", error=None, options=going_on)
    yield Case("a dialog closed in its own handler", PRESSED %
               'closedialog\nalter 11\ntitle "late"\nendalter\nprint controlvalue(11)\nclosedialog\nclosedialog', output="late\nclosed 1\nafter\n",
               lines="click 11\nclick 11\nok\n")
    yield Case("a dialog whose handler takes its handlers away", PRESSED %
               'event create Pressed Closed\nevent remove Pressed Closed\nthrow Pressed(1)\nclosedialog', output="closed 1\nafter\n",
               lines="click 11\nclick 11\n")
    yield Case("a dialog that ends the program in its handler", PRESSED % "end", output=None, lines="click 11\nok\n")
    yield Case("handlers that take each other away", "for i = 1 to 3\nevent create E A\nevent create E B\nevent create E C\n"
               'throw E(i)\nnext\nprint "done"\nend\nsub A(v)\nevent remove E A\nevent remove E B\nevent remove E C\n'
               'print "A"\nendsub\nsub B(v)\nprint "B"\nendsub\nsub C(v)\nprint "C"\nendsub\n', error=False,
               output="A\nA\nA\ndone\n")
    for event in ("E", "OnStop", "OnTimer"):
        yield Case("the handler of %s throws it" % event, "event create %s H\nthrow %s(1)\nend\nsub H(v)\nthrow %s(v)\nendsub\n" %
                   (event, event, event), error=ERROR_50)
    yield Case("a handler that attaches itself again and again", "event create E H\nthrow E(1)\nprint 1\nend\nsub H(v)\n"
               "event remove E H\nevent create E H\nendsub\n", options=going_on)
    yield Case("a watched loop variable whose handler moves it", "global n\nn = 1\nevent create C H\nwatch create n C\n"
               'for n = 1 to 5\nnext\nprint "for"\nend\nsub H(v)\nwatch remove n\nn = 100\nendsub\n', options=going_on)


def paths():
    """Scripts that are no scripts."""
    yield Case("missing script", error=ERROR_17, script="missing.bas")
    yield Case("script in a missing folder", error=ERROR_17, script="no/such/folder/missing.bas")
    yield Case("a folder", error=ERROR_17, script="folder", prepare=lambda box: (box / "folder").mkdir())
    # Nobody waits for the writer; whether the pipe then counts as an empty script is left open.
    yield Case("a pipe without a writer", script="pipe", prepare=lambda box: os.mkfifo(box / "pipe"))
    yield Case("a link to itself", error=ERROR_17, script="link", prepare=lambda box: (box / "link").symlink_to("link"))
    yield Case("the empty path", error=ERROR_17, script="")
    yield Case("a very long path", error=ERROR_17, script="a" * 100_000)
    yield Case("an empty script", b"", error=False, output="")
    yield Case("an endless device", error=ERROR_17, script="/dev/zero")
    yield Case("memory that cannot be read", error=ERROR_17, script="/proc/self/mem")
    if os.geteuid() != 0:  # nothing is unreadable to the superuser
        yield Case("an unreadable script", b"print 1\n", error=ERROR_17, prepare=lambda box: (box / "case.bas").chmod(0))
    yield Case("a pipe as a library", 'library "pipe"\nprint "on"\n', output="on\n",
               prepare=lambda box: os.mkfifo(box / "pipe"), options=["--on-error=continue"])
    yield Case("a pipe as a file", 'open "pipe" as 1 text\nx = readline(1)\nprint "on"\n', output="on\n",
               prepare=lambda box: os.mkfifo(box / "pipe"), options=["--on-error=continue"])


def damaged(count):
    """The examples, cut off or with bytes changed."""
    scripts = sorted(SOURCE_FOLDER.glob("examples/*/*.bas"))
    if not scripts:
        raise SystemExit("there are no examples in %s" % SOURCE_FOLDER)
    source = random.Random(20)
    for number in range(count):
        script = scripts[number % len(scripts)]
        program = bytearray(script.read_bytes())
        if number % 5 == 0:
            del program[source.randrange(len(program)):]
        else:
            for _ in range(source.choice((1, 1, 2, 8))):
                program[source.randrange(len(program))] ^= 1 << source.randrange(8)
        siblings = {path.name: path.read_bytes() for path in script.parent.iterdir()
                    if path.is_file() and path != script}
        # Half of them go on behind their errors; such a program may lose the end of a loop, so it is only cut off.
        options = ["--on-error=continue"] if number % 5 == 0 else []
        yield Case("damaged %s %d" % (script.stem, number), bytes(program), files=siblings, options=options)


def all_cases():
    yield from paths()
    yield from composed()
    yield from nested()
    yield from large()
    yield from torn_away()
    yield from repeated()
    yield from damaged(500)
    yield from noise()


class Runner:
    def __init__(self, path, time_limit):
        self.path = str(Path(path).resolve())
        self.time_limit = time_limit
        self.sanitized = b"__asan_init" in Path(path).read_bytes()

    def limit(self):
        _, hard = resource.getrlimit(resource.RLIMIT_STACK)
        # A sanitizer's frames are several times as large.
        resource.setrlimit(resource.RLIMIT_STACK, (STACK_LIMIT * 4 if self.sanitized else STACK_LIMIT, hard))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if not self.sanitized:
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))

    def run(self, case):
        """Runs one case; gives what is wrong with it, None when nothing is."""
        environment = dict(os.environ)
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"):
            environment[name] = "%s:exitcode=%d" % (os.environ.get(name, ""), SANITIZER_STATUS)
        with tempfile.TemporaryDirectory(prefix="brindle-hostile-") as name:
            box = Path(name) / "run"
            box.mkdir()
            # No device is to be found: nonsense must not reach what is plugged into this machine.
            (Path(name) / "devices").mkdir()
            environment["BRINDLE_DEVICES"] = str(Path(name) / "devices")
            for file, contents in case.files.items():
                (box / file).write_bytes(contents.encode() if isinstance(contents, str) else contents)
            (box / "case.bas").write_bytes(case.program)
            if case.prepare:
                case.prepare(box)
            command = [self.path, "--ui=console"] + (case.options or ["--on-error=abort"]) + ["--", case.script]
            (Path(name) / "in").write_text(case.lines or "", encoding="utf-8")
            with open(Path(name) / "in", "rb") as typed, open(Path(name) / "out", "wb+") as out, open(Path(name) / "err", "wb+") as err:
                # Only a few cases print what is compared; the others may print without end.
                try:
                    done = subprocess.run(command, cwd=box, stdin=typed, env=environment, stderr=err,
                                          stdout=out if case.output is not None else subprocess.DEVNULL,
                                          preexec_fn=self.limit, timeout=self.time_limit, check=False)
                except subprocess.TimeoutExpired:
                    return "not over after %d seconds" % self.time_limit
                err.seek(0)
                errors = err.read(64 * 1024).decode("utf-8", "replace")
                out.seek(0)
                printed = out.read(64 * 1024).decode("utf-8", "replace")
            shutil.rmtree(box, ignore_errors=True)
        return self.judge(case, done.returncode, errors, printed)

    @staticmethod
    def judge(case, status, errors, printed):
        shown = errors[:400].strip()
        if status not in (0, 1):
            return "status %d, stderr: %s" % (status, shown)
        # The forms of dialogs stand on stderr as well, each under a line of its own.
        if (status == 1 and not errors) or (status == 0 and errors and not errors.startswith("--- ")):
            return "status %d does not fit stderr: %r" % (status, shown)
        if case.error is True and not errors:
            return "no error was shown"
        if case.error is False and errors:
            return "an error was shown: %r" % shown
        if isinstance(case.error, str) and case.error not in errors:
            return "wanted %r, stderr: %r" % (case.error, shown)
        if case.output is not None and printed != case.output:
            return "wanted %r, printed: %r" % (case.output[:200], printed[:200])
        return None


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True, help="the interpreter's path")
    parser.add_argument("--only", help="only the cases whose name holds this")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="cases run at the same time")
    arguments = parser.parse_args()
    runner = Runner(arguments.runner, SLOW_TIME_LIMIT if os.environ.get("BRINDLE_SLOW_TESTS") else TIME_LIMIT)
    # Programs are large: they are made as they are run, never all at once.
    cases = (case for case in all_cases() if arguments.only is None or arguments.only in case.name)
    counts = {True: 0, False: 0}

    def collect(future, case):
        fault = future.result()
        counts[fault is None] += 1
        if fault is not None:
            print("FAIL %s: %s" % (case.name, fault), flush=True)

    with concurrent.futures.ThreadPoolExecutor(max(1, arguments.jobs)) as pool:
        pending = {}
        for case in cases:
            pending[pool.submit(runner.run, case)] = case
            if len(pending) > arguments.jobs:
                finished, _ = concurrent.futures.wait(pending, return_when=concurrent.futures.FIRST_COMPLETED)
                for future in finished:
                    collect(future, pending.pop(future))
        for future, case in pending.items():
            collect(future, case)
    print("%d passed, %d failed" % (counts[True], counts[False]))
    return 1 if counts[False] or not counts[True] else 0


if __name__ == "__main__":
    sys.exit(main())
