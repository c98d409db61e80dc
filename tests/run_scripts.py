#!/usr/bin/env python3
"""Runs the script tests: every <area>/<behaviour>.bas below a folder.

A test script carries its expectations in comments beside the lines that
cause them (tests/README.md lists the markers).  Each script runs alone in a
fresh folder under the console user interface; printed text, error boxes with
the lines they quote, exit status and time are all compared exactly.
"""

import argparse
import codecs
import concurrent.futures
import difflib
import os
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

TIME_LIMIT = 5.0
SLOW_TIME_LIMIT = 30.0
DEFAULT_OPTIONS = ["--ui=console", "--on-error=ask"]

# A runaway script can print for seconds; more than this is never compared.
OUTPUT_LIMIT = 16 * 1024 * 1024

# A test with an .err file says nothing about how many boxes appear, so it gets
# more OK answers than any such test needs.
ANSWERS_BESIDE_ERR_FILE = 32

# The area whose scripts show forms and prompts, which stand on the same stream as the boxes.
FORMS_AREA = "dialogs"

# Number 0 has no text: its box holds only the line and follows a notice.
NO_TEXT_NOTICE = "Error loading resource string."

MESSAGES = {
    0: NO_TEXT_NOTICE,
    1: "Syntax error",
    2: "Unbalanced parens",
    3: "No expression present",
    4: "Expected: =",
    5: "Not a variable",
    6: "Lable table full",
    7: "Duplicate label",
    8: "Undefined label",
    9: "Expected: THEN",
    10: "Expected: TO",
    11: "Too many nested FOR loops",
    12: "NEXT without FOR",
    13: "Too many nested GOSUBs",
    14: "Incorrect location of the RETURN statement",
    15: "Illegal arithmetic operator",
    16: "Source file is empty",
    17: "Not enough memory to load source file",
    18: "Unexpected operator",
    19: "Return value of the function is not defined",
    20: "ENDFUNCTION statement is missing",
    21: "Undefined function name",
    22: "Incorrect function call",
    23: "Incorrect function definition",
    24: "Incorrect number of function parameters",
    25: "Incorrect external library name",
    26: "Incorrect external function name",
    27: "Duplicate function definition",
    28: "Function declaration found in main program code",
    29: "Invalid keyword ",
    30: "Attempting to use variable that is not initialized",
    31: "Invalid argument type",
    32: "Incorrect array size",
    33: "Invalid field name",
    34: "Field name does not exists in data structure",
    35: "Undefined array variable",
    36: "Array index is out of bounds",
    37: "Undefined variable",
    38: "Incorrect assignment operator. Can't assign array to a varaible.",
    39: "Incorrect assignment operator. Can't assign variable to an array.",
    40: "Unsupported keyword",
    41: "Unsupported dialog control name.",
    42: "Dialog creating error",
    43: "No active dialogs open",
    44: "Incorrect control ID",
    45: "Incorrect parameter",
    46: "File number is out of valid range",
    47: "File does not exist",
    48: "OK",
    49: "Invalid file handle",
    50: "Brindle unrecoverable error",
    51: "File I/O Error. Actual number of bytes is different than requested.",
    52: "File is not open in text mode.\nCan't perform operation.",
    53: "Run-time file I/O error.",
    54: '"While" keyword is missing.',
    55: "Illegal NEXT statement.",
    56: "ELSE or ENDIF statement is missing",
    57: "Invalid dBase file handle",
    58: "True",
    59: "False",
}

MARKER = re.compile(r"#[ \t]*(expect(?![A-Za-z])|(?:answer|input|options|exit)(?=:))(.*)", re.DOTALL)
EXPECT_ERROR = re.compile(
    r'[ \t]+error[ \t]+(\d+)(?:[ \t]+(?:at[ \t]+"((?:[^"\\]|\\.)*)"|(anywhere)))?:[ \t]?(.*)', re.DOTALL)
ESCAPES = {"n": "\n", "r": "\r", "t": "\t", '"': '"', "\\": "\\"}


class TestFault(Exception):
    """The test itself is wrong: nothing about the interpreter is learnt."""


def windows_1252(error):
    """A byte that is not UTF-8 is the windows-1252 character, as the interpreter reads it."""
    taken = error.object[error.start:error.end]
    return "".join(bytes([byte]).decode("cp1252", "replace") for byte in taken), error.end


codecs.register_error("windows_1252", windows_1252)


def unescape(text):
    return re.sub(r"\\(.)", lambda match: ESCAPES.get(match.group(1), match.group(0)), text)


class ExpectedError:
    """One error box: its number, the line it quotes (None: any) and the answer it gets."""

    def __init__(self, number, quoted, answer):
        self.number = number
        self.quoted = quoted
        self.answer = answer

    def text(self, quoted):
        head = NO_TEXT_NOTICE + "\n" if self.number == 0 else MESSAGES[self.number]
        return head + "\n" + quoted + "\n"


class Expectations:
    """Everything that one script and the files beside it say about its run."""

    def __init__(self, script):
        self.options = list(DEFAULT_OPTIONS)
        self.stdout = ""
        self.errors = []
        self.input_lines = []
        self.exit_status = None
        self.ends_input = False
        self._pending_answer = None
        self._has_output_marker = False
        self._read_markers(script.read_bytes().decode("utf-8", "windows_1252"))
        self._read_files(script)
        if self._pending_answer is not None:
            raise TestFault("an answer stands behind the last expected error")
        if self.exit_status is None:
            self.exit_status = 1 if self.errors or self.stderr else 0

    def _read_markers(self, program):
        lines = program.split("\n")
        owner = None
        for number, line in enumerate(lines):
            if not line.lstrip(" \t").startswith("#"):
                # Error boxes quote from the line break before their line; the first line has none.
                owner = ("\n" if number > 0 else "") + line
            found = MARKER.search(line)
            if found:
                self._take(found.group(1), found.group(2).removesuffix("\r"), owner, number + 1)

    def _take(self, word, rest, owner, number):
        place = "line %d: " % number
        if word == "expect":
            self._take_expect(rest, owner, place)
            return
        value = rest[1:].strip()
        if word == "answer":
            if self._pending_answer is not None:
                raise TestFault(place + "two answers for one error box")
            self._pending_answer = value
        elif word == "input":
            self.input_lines.append(value)
        elif word == "options":
            self.options = shlex.split(value)
        else:
            if not value.isdigit():
                raise TestFault(place + "an exit status is a number")
            self.exit_status = int(value)

    def _take_expect(self, rest, owner, place):
        if rest.startswith(":"):
            self._has_output_marker = True
            self.stdout += rest[1:].removeprefix(" ") + "\n"
            return
        found = EXPECT_ERROR.fullmatch(rest)
        if not found:
            raise TestFault(place + "malformed marker")
        number = int(found.group(1))
        if MESSAGES.get(number) != unescape(found.group(4)):
            raise TestFault(place + "error %d has another message: %r" % (number, MESSAGES.get(number)))
        if found.group(3):
            quoted = None
        elif found.group(2) is not None:
            quoted = unescape(found.group(2))
        elif owner is None:
            raise TestFault(place + "no program line stands above this error marker")
        else:
            quoted = owner
        answer = self._pending_answer or "ok"
        self._pending_answer = None
        self.errors.append(ExpectedError(number, quoted, answer))
        if answer == "end of input":
            self.ends_input = True
        elif not self.ends_input and "--on-error=ask" in self.options:
            self.input_lines.append(answer)

    def _read_files(self, script):
        out_file, err_file = script.with_suffix(".out"), script.with_suffix(".err")
        self.stderr = err_file.read_bytes().decode("utf-8", "windows_1252") if err_file.exists() else None
        if out_file.exists():
            if self._has_output_marker:
                raise TestFault("both an .out file and markers of printed text")
            self.stdout = out_file.read_bytes().decode("utf-8", "windows_1252")
        if self.stderr is not None:
            if self.errors:
                raise TestFault("both an .err file and markers of errors")
            answer, self._pending_answer = self._pending_answer, None
            if answer != "end of input":
                self.input_lines += [answer or "ok"] + ["ok"] * (ANSWERS_BESIDE_ERR_FILE - 1)
        if not (self._has_output_marker or self.errors or out_file.exists() or self.stderr is not None):
            raise TestFault("the script expects nothing: no marker, no .out and no .err file")

    def expected_stderr(self):
        """The text of all boxes, and a pattern for it where a box may quote any line."""
        if self.stderr is not None:
            return self.stderr, None
        text = "".join(error.text("(any line)" if error.quoted is None else error.quoted) for error in self.errors)
        if all(error.quoted is not None for error in self.errors):
            return text, None
        return text, re.compile("".join(self._box_patterns()))

    def _box_patterns(self):
        for error in self.errors:
            if error.quoted is None:
                yield re.escape(error.text("")[:-1]) + r"[\s\S]*?\n"
            else:
                yield re.escape(error.text(error.quoted))

    def boxes_stand_among_forms(self, stderr):
        """Whether the boxes come in their order, and no line beside them is the message of a box."""
        beside, position = [], 0
        for pattern in self._box_patterns():
            found = re.compile("^" + pattern, re.MULTILINE).search(stderr, position)
            if not found:
                return False
            beside.append(stderr[position:found.start()])
            position = found.end()
        beside.append(stderr[position:])
        messages = {line for message in MESSAGES.values() for line in message.split("\n")}
        return not any(line in messages for text in beside for line in text.split("\n"))


def visible(line):
    """Escapes what a terminal would not show."""
    return "".join(character if character.isprintable() or character == "\n" else
                   character.encode("unicode_escape").decode("ascii") for character in line)


def difference(expected, actual):
    def prepare(text):
        lines = [visible(line) for line in text.splitlines(keepends=True)]
        if lines and not lines[-1].endswith("\n"):
            lines[-1] += "  (no line feed)\n"
        return lines

    shown = list(difflib.unified_diff(prepare(expected[:100000]), prepare(actual[:100000]),
                                      "expected", "actual", n=3))
    if len(shown) > 60:
        shown = shown[:60] + ["...\n"]
    return "".join("    " + line for line in shown)


class Runner:
    def __init__(self, command, time_limit):
        self.command = [str(Path(command).resolve())] if Path(command).exists() else shlex.split(command)
        self.time_limit = time_limit

    def run(self, script, expectations):
        """Runs the script in a fresh folder; returns exit status (None: time-out), stdout and stderr."""
        with tempfile.TemporaryDirectory(prefix="brindle-test-") as box:
            folder = Path(box) / "run"
            data = script.with_suffix(".data")
            shared = script.parent / "include"
            if data.is_dir():
                shutil.copytree(data, folder)
            else:
                folder.mkdir()
            if shared.is_dir():
                shutil.copytree(shared, folder / "include", dirs_exist_ok=True)
            shutil.copy(script, folder / script.name)
            given = Path(box) / "stdin"
            given.write_bytes("".join(line + "\n" for line in expectations.input_lines).encode())
            return self._execute(script.name, expectations.options, folder, Path(box))

    def _execute(self, name, options, folder, box):
        with open(box / "stdin", "rb") as given, open(box / "stdout", "w+b") as out, \
                open(box / "stderr", "w+b") as err:
            process = subprocess.Popen(self.command + options + [name], cwd=folder, stdin=given,
                                       stdout=out, stderr=err, start_new_session=True)
            try:
                status = process.wait(self.time_limit)
            except subprocess.TimeoutExpired:
                # The whole session: the script may have started programs of its own.
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                status = None
            texts = []
            for stream in (out, err):
                stream.seek(0)
                texts.append(stream.read(OUTPUT_LIMIT).decode("utf-8", "backslashreplace"))
            return status, texts[0], texts[1]


def judge(runner, script):
    """The list of reasons why the test failed; empty when it passed."""
    try:
        expectations = Expectations(script)
    except TestFault as fault:
        return ["error of the test: %s" % fault]
    status, out, err = runner.run(script, expectations)
    reasons = []
    if status is None:
        reasons.append("time limit of %g s exceeded" % runner.time_limit)
    elif status < 0:
        reasons.append("ended by signal %s" % signal.Signals(-status).name)
    elif status != expectations.exit_status:
        reasons.append("exit status %d, expected %d" % (status, expectations.exit_status))
    if out != expectations.stdout:
        reasons.append("printed text differs\n" + difference(expectations.stdout, out))
    expected, pattern = expectations.expected_stderr()
    expected = expected or ""
    if expectations.stderr is None and script.parent.name == FORMS_AREA:
        right = expectations.boxes_stand_among_forms(err)
    else:
        right = pattern.fullmatch(err) if pattern else err == expected
    if not right:
        reasons.append("error boxes differ\n" + difference(expected, err))
    return reasons


def find_scripts(root, area):
    def is_test(path):
        folders = path.relative_to(root).parts[:-1]
        return not any(name == "include" or name.endswith(".data") for name in folders)

    start = root / area if area else root
    return sorted(path for path in start.rglob("*.bas") if is_test(path))


def run_all(runner, root, area, jobs, report):
    """Runs every test below root; returns the numbers of passed and failed ones."""
    scripts = find_scripts(root, area)
    passed = 0
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for script, reasons in zip(scripts, pool.map(lambda path: judge(runner, path), scripts)):
            if not reasons:
                passed += 1
                continue
            report("FAIL %s" % script.relative_to(root))
            for reason in reasons:
                report("  " + reason.rstrip("\n"))
    return passed, len(scripts) - passed


# The self-test proves that the driver does fail: a driver that passes
# everything would hide every fault of the interpreter.

# "@" stands for "#" in what it writes, so that its own lines hold no markers.
FAKE_RUNNER = r'''
import sys, time
script = sys.argv[-1]
status = 0
for line in open(script, encoding="utf-8"):
    if "#!" not in line:
        continue
    word, _, rest = line.split("#!", 1)[1].strip("\n").lstrip().partition(" ")
    rest = rest.replace("\\n", "\n").replace("@", "#")
    if word == "out":
        sys.stdout.write(rest + "\n")
    elif word == "raw":
        sys.stdout.write(rest)
    elif word == "err":
        sys.stderr.write(rest + "\n")
    elif word == "exit":
        status = int(rest)
    elif word == "options":
        sys.stdout.write(" ".join(sys.argv[1:-1]) + "\n")
    elif word == "stdin":
        sys.stdout.write(sys.stdin.read())
    elif word == "show":
        sys.stdout.write(open(rest).read())
    elif word == "sleep":
        time.sleep(float(rest))
    elif word == "crash":
        import os, signal
        os.kill(os.getpid(), signal.SIGSEGV)
sys.exit(status)
'''

NEXT_ERROR = "Illegal NEXT statement."
ONE_ERROR = "print 1\nnext # expect error 55: %s\n" % NEXT_ERROR
ONE_ERROR_BOX = "#! err %s\\n\\nnext @ expect error 55: %s\n" % (NEXT_ERROR, NEXT_ERROR)

# name, files of the test, text that a failing verdict must hold (None: the test passes)
SELF_TESTS = [
    ("right_output_passes", {"t.bas": "# expect: a\n# expect: b\n#! out a\n#! out b\n"}, None),
    ("wrong_output_fails", {"t.bas": "# expect: a\n#! out b\n"}, "printed text differs"),
    ("missing_output_fails", {"t.bas": "# expect: a\n"}, "printed text differs"),
    ("extra_output_fails", {"t.bas": "# expect: a\n#! out a\n#! out b\n"}, "printed text differs"),
    ("missing_line_feed_fails", {"t.bas": "# expect: a\n#! raw a\n"}, "printed text differs"),
    ("blanks_count", {"t.bas": "# expect: a  b\n#! out a b\n"}, "printed text differs"),
    ("right_error_passes", {"t.bas": ONE_ERROR + ONE_ERROR_BOX + "#! exit 1\n"}, None),
    ("missing_error_fails", {"t.bas": ONE_ERROR + "#! exit 1\n"}, "error boxes differ"),
    ("extra_error_fails", {"t.bas": ONE_ERROR + ONE_ERROR_BOX * 2 + "#! exit 1\n"}, "error boxes differ"),
    ("unexpected_error_fails", {"t.bas": "# expect: a\n#! out a\n#! err x\n"}, "error boxes differ"),
    ("wrong_error_line_fails",
     {"t.bas": ONE_ERROR + "#! err %s\\n\\nprint 1\n#! exit 1\n" % NEXT_ERROR}, "error boxes differ"),
    ("missing_line_break_before_the_quoted_line_fails",
     {"t.bas": ONE_ERROR + ONE_ERROR_BOX.replace("\\n\\n", "\\n") + "#! exit 1\n"}, "error boxes differ"),
    ("first_line_is_quoted_without_a_line_break",
     {"t.bas": ONE_ERROR[8:] + ONE_ERROR_BOX.replace("\\n\\n", "\\n") + "#! exit 1\n"}, None),
    ("wrong_error_message_fails",
     {"t.bas": ONE_ERROR + ONE_ERROR_BOX.replace("NEXT statement.\\n", "LOOP statement.\\n") + "#! exit 1\n"},
     "error boxes differ"),
    ("error_marker_on_a_comment_line_belongs_to_the_line_above",
     {"t.bas": "print 1\nnext\n# expect error 55: %s\n#! err %s\\n\\nnext\n#! exit 1\n" % (NEXT_ERROR, NEXT_ERROR)},
     None),
    ("error_at_a_given_text_passes",
     {"t.bas": '# expect error 55 at "\\nx \\"y\\"": %s\n#! err %s\\n\\nx "y"\n#! exit 1\n' % (NEXT_ERROR, NEXT_ERROR)},
     None),
    ("error_at_another_text_fails",
     {"t.bas": '# expect error 55 at "x": %s\n#! err %s\\n\\nx\n#! exit 1\n' % (NEXT_ERROR, NEXT_ERROR)},
     "error boxes differ"),
    ("error_anywhere_takes_any_line",
     {"t.bas": "# expect error 55 anywhere: %s\n#! err %s\\n\\nxyz\n#! exit 1\n" % (NEXT_ERROR, NEXT_ERROR)}, None),
    ("error_anywhere_still_needs_its_message",
     {"t.bas": "# expect error 55 anywhere: %s\n#! err Syntax error\\n\\nxyz\n#! exit 1\n" % NEXT_ERROR},
     "error boxes differ"),
    ("forms_may_stand_around_the_boxes_of_dialogs",
     {"dialogs/t.bas": ONE_ERROR + "#! err --- a form ---\n" + ONE_ERROR_BOX + "#! err 1 okbutton OK\n#! exit 1\n"}, None),
    ("box_missing_among_forms_fails",
     {"dialogs/t.bas": ONE_ERROR + "#! err --- a form ---\n#! exit 1\n"}, "error boxes differ"),
    ("surplus_box_among_forms_fails",
     {"dialogs/t.bas": "# expect: a\n#! out a\n#! err --- a form ---\n#! err %s\n" % NEXT_ERROR},
     "error boxes differ"),
    ("forms_in_another_area_fail",
     {"t.bas": ONE_ERROR + "#! err --- a form ---\n" + ONE_ERROR_BOX + "#! exit 1\n"}, "error boxes differ"),
    ("error_0_has_a_notice_and_no_text",
     {"t.bas": '# expect error 0 at "x": %s\n#! err %s\\n\\nx\n#! exit 1\n' % (NO_TEXT_NOTICE, NO_TEXT_NOTICE)}, None),
    ("message_of_two_lines_is_spelt_with_an_escape",
     {"t.bas": '# expect error 52 at "x": %s\n#! err %s\\nx\n#! exit 1\n' % ((MESSAGES[52].replace("\n", "\\n"),) * 2)},
     None),
    ("errors_in_another_order_fail",
     {"t.bas": '# expect error 1 at "x": Syntax error\n# expect error 3 at "x": No expression present\n'
               "#! err No expression present\\nx\n#! err Syntax error\\nx\n#! exit 1\n"}, "error boxes differ"),
    ("wrong_exit_status_fails", {"t.bas": "# expect: a\n#! out a\n#! exit 1\n"}, "exit status 1, expected 0"),
    ("error_without_exit_status_1_fails", {"t.bas": ONE_ERROR + ONE_ERROR_BOX}, "exit status 0, expected 1"),
    ("given_exit_status_passes", {"t.bas": "# expect: a\n# exit: 2\n#! out a\n#! exit 2\n"}, None),
    ("time_out_fails", {"t.bas": "# expect: a\n#! out a\n#! sleep 60\n"}, "time limit"),
    ("crash_fails", {"t.bas": "# expect: a\n#! out a\n#! crash\n"}, "SIGSEGV"),
    ("test_that_expects_nothing_fails", {"t.bas": "print 1\n"}, "expects nothing"),
    ("malformed_marker_fails", {"t.bas": "# expect: a\n# expect eror 55: x\n#! out a\n"}, "malformed marker"),
    ("number_of_another_message_fails", {"t.bas": "next # expect error 12: %s\n" % NEXT_ERROR}, "another message"),
    ("error_marker_above_all_lines_fails", {"t.bas": "# expect error 55: %s\nnext\n" % NEXT_ERROR}, "no program line"),
    ("answer_without_an_error_fails", {"t.bas": "# expect: a\n#! out a\n# answer: cancel\n"}, "answer stands behind"),
    ("default_answer_is_ok",
     {"t.bas": "# expect: ok\n" + ONE_ERROR + ONE_ERROR_BOX + "#! stdin\n#! exit 1\n"}, None),
    ("answers_and_input_keep_their_order",
     {"t.bas": "# expect: first\n# expect: cancel\n# input: first\n# answer: cancel\n" + ONE_ERROR + ONE_ERROR_BOX +
      "#! stdin\n#! exit 1\n"}, None),
    ("end_of_input_answers_nothing",
     {"t.bas": "# expect: .\n# answer: end of input\n" + ONE_ERROR + ONE_ERROR_BOX + "#! stdin\n#! out .\n#! exit 1\n"},
     None),
    ("default_options", {"t.bas": "# expect: --ui=console --on-error=ask\n#! options\n"}, None),
    ("options_are_replaced", {"t.bas": "# expect: --x --y=1\n# options: --x --y=1\n#! options\n"}, None),
    ("data_folder_is_copied",
     {"t.bas": "# expect: kept\n#! show sub/d.txt\n", "t.data/sub/d.txt": "kept\n", "t.data/no_test.bas": ""}, None),
    ("include_folder_is_copied",
     {"t.bas": "# expect: kept\n#! show include/d.bas\n", "include/d.bas": "kept\n"}, None),
    ("out_file_is_compared", {"t.bas": "#! raw a\n", "t.out": "a"}, None),
    ("out_file_that_differs_fails", {"t.bas": "#! raw a\n", "t.out": "a\n"}, "printed text differs"),
    ("err_file_is_compared", {"t.bas": "#! err a\n#! exit 1\n", "t.err": "a\n"}, None),
    ("err_file_that_differs_fails", {"t.bas": "#! err b\n#! exit 1\n", "t.err": "a\n"}, "error boxes differ"),
]


def self_test():
    failed = 0
    with tempfile.TemporaryDirectory(prefix="brindle-self-test-") as box:
        fake = Path(box) / "fake_runner.py"
        fake.write_text(FAKE_RUNNER, encoding="utf-8")
        for name, files, wanted in SELF_TESTS:
            root = Path(box) / name
            for path, text in files.items():
                target = root / "area" / path
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(text, encoding="utf-8")
            # Long enough for a slow machine to start the fake runner, except where it must run out.
            runner = Runner(shlex.join([sys.executable, str(fake)]), 1.0 if "time_out" in name else SLOW_TIME_LIMIT)
            lines = []
            counts = run_all(runner, root, None, 1, lines.append)
            report = "\n".join(lines)
            right = counts == (1, 0) if wanted is None else counts == (0, 1) and wanted in report
            if not right:
                failed += 1
                print("FAIL %s: wanted %s, got %s passed, %s failed\n%s" %
                      (name, "a pass" if wanted is None else repr(wanted), counts[0], counts[1], report))
    print("%d passed, %d failed" % (len(SELF_TESTS) - failed, failed))
    return 1 if failed else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", help="the interpreter: a path, or a command with arguments")
    parser.add_argument("--area", help="only the tests of this folder")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="tests run at the same time")
    parser.add_argument("--self-test", action="store_true", help="check the driver itself with a made-up interpreter")
    parser.add_argument("tests_dir", nargs="?", type=Path, help="the folder that holds the areas")
    arguments = parser.parse_args()
    if arguments.self_test:
        return self_test()
    if not arguments.runner or not arguments.tests_dir:
        parser.error("--runner and the tests' folder are needed")
    time_limit = SLOW_TIME_LIMIT if os.environ.get("BRINDLE_SLOW_TESTS") else TIME_LIMIT
    runner = Runner(arguments.runner, time_limit)
    root = arguments.tests_dir.resolve()
    passed, failed = run_all(runner, root, arguments.area, max(1, arguments.jobs), print)
    if passed + failed == 0:
        print("no tests found in %s" % arguments.tests_dir)
        failed = 1
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
