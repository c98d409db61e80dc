#!/usr/bin/env python3
"""Tests "brindle check": the table of cases, and the command itself.

A case is a script cases/<code>/<what it shows>.bas that says beside its lines
which problems there are:

    a = 1
    if a >= 1 then  # problem: comparison-operator@6

that is CODE@COLUMN, several with blanks between.  A marker on a line that holds
only a comment belongs to the last line above that holds more; "# problem on
line N:" names another line.  Each case is also run, because an error has to be
one: the run must report an error when an error is foreseen, and none when not.
"# runs: error" and "# runs: silent" say where that is otherwise, and why is
what the case shows.

    python3 tests/run_check.py --runner build/release/brindle tests/check/cases
"""

import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

# Seconds; what comes to an end does so much earlier, but for a sanitized runner, or one that counts its lines.
TIME_LIMIT = 300 if os.environ.get("BRINDLE_SLOW_TESTS") else 60
MARKER = re.compile(r"# problem(?: on line (\d+))?:((?: [a-z-]+@\d+)+)")
RUNS = re.compile(r"^# runs: (error|silent)$", re.MULTILINE)
FEWEST_CASES = 80


class Failures:
    def __init__(self):
        self.count = 0
        self.checks = 0

    def expect(self, what, condition, detail=""):
        self.checks += 1
        if not condition:
            self.count += 1
            print("FAILED: %s%s" % (what, ": " + str(detail) if detail else ""))

    def expect_equal(self, what, expected, actual):
        self.expect(what, expected == actual, "expected %r, found %r" % (expected, actual))


def run(command, folder, **more):
    return subprocess.run(command, cwd=folder, capture_output=True, timeout=TIME_LIMIT, stdin=subprocess.DEVNULL,
                          **more)


# ---- the cases

def expected_problems(text):
    found = set()
    owner = 0
    for number, line in enumerate(text.split("\n"), 1):
        if not line.lstrip().startswith("#"):
            owner = number
        for match in MARKER.finditer(line):
            for problem in match.group(2).split():
                code, column = problem.split("@")
                found.add((int(match.group(1) or owner), int(column), code))
    return found


def check_case(runner, script, failures, seen):
    name = "%s/%s" % (script.parent.name, script.stem)
    text = script.read_bytes().decode("utf-8")
    expected = expected_problems(text)
    with tempfile.TemporaryDirectory(prefix="brindle-check-") as folder:
        shutil.copy(script, folder)
        done = run([runner, "check", "--format=json", script.name], folder)
        problems = json.loads(done.stdout)["scripts"][0]["problems"]
        ran = run([runner, "--ui=console", "--on-error=continue", script.name], folder)
    actual = {(problem["line"], problem["column"], problem["code"]) for problem in problems}
    failures.expect_equal(name, sorted(expected), sorted(actual))
    errors = any(problem["severity"] == "error" for problem in problems)
    failures.expect_equal(name + ": exit status", 1 if errors else 0, done.returncode)
    outcome = RUNS.search(text)
    fails = outcome.group(1) == "error" if outcome else errors
    failures.expect_equal(name + ": whether the run reports an error", fails, ran.returncode == 1)
    for problem in problems:
        seen.add(problem["code"])
        failures.expect(name + ": a hint", problem["hint"].endswith((".", "...")) and "\n" not in problem["hint"],
                        problem["hint"])
        failures.expect(name + ": a message", problem["message"] and "\n" not in problem["message"])
        failures.expect(name + ": columns", problem["endColumn"] >= problem["column"] >= 1)
    return script.parent.name


def check_cases(runner, folder, failures):
    scripts = sorted(folder.glob("*/*.bas"))
    failures.expect("%d cases" % len(scripts), len(scripts) >= FEWEST_CASES)
    seen = set()
    for script in scripts:
        check_case(runner, script, failures, seen)
    return seen


# ---- the command

def command_tests(runner, failures, seen):
    with tempfile.TemporaryDirectory(prefix="brindle-check-") as box:
        folder = Path(box)
        (folder / "good.bas").write_text('print "good"\n')
        (folder / "bad.bas").write_text('print "a" + "b"\nif 1 >= 2 then\nendif\n')
        (folder / "trap.bas").write_text("print 7 % 2\n")
        exit_statuses(runner, folder, failures)
        text_form(runner, folder, failures)
        json_form(runner, folder, failures)
        sarif_form(runner, folder, failures)
        unreadable_files(runner, folder, failures)
        included_files(runner, folder, failures, seen)
        enciphered_scripts(runner, folder, failures)
        host_functions(runner, folder, failures)
        odd_texts(runner, folder, failures)


def check(runner, folder, *arguments):
    return run([runner, "check", *arguments], folder)


def report(runner, folder, *arguments):
    done = check(runner, folder, "--format=json", *arguments)
    return json.loads(done.stdout)


def exit_statuses(runner, folder, failures):
    rows = [
        ("no problem", ["good.bas"], 0),
        ("an error", ["bad.bas"], 1),
        ("a warning", ["trap.bas"], 0),
        ("a warning under --strict", ["--strict", "trap.bas"], 1),
        ("no problem under --strict", ["--strict", "good.bas"], 0),
        ("one bad file of several", ["good.bas", "bad.bas", "trap.bas"], 1),
        ("no file", [], 2),
        ("an unknown option", ["--nope", "good.bas"], 2),
        ("an unknown form", ["--format=xml", "good.bas"], 2),
        ("an unknown code page", ["--codepage=nope", "good.bas"], 2),
        ("help", ["--help"], 0),
        ("the codes", ["--codes"], 0),
    ]
    for name, arguments, status in rows:
        for form in ("text", "json", "sarif"):
            extra = [] if "--format=xml" in arguments else ["--format=" + form]
            failures.expect_equal("%s as %s: exit status" % (name, form), status,
                                  check(runner, folder, *extra, *arguments).returncode)
    failures.expect_equal("nothing is said of a good script", b"", check(runner, folder, "good.bas").stdout)
    failures.expect("the runner's help names the command", b"brindle check FILE" in run([runner, "--help"], folder).stdout)
    with open("/dev/full", "wb") as full:
        done = subprocess.run([runner, "check", "bad.bas"], cwd=folder, stdout=full, stderr=subprocess.PIPE,
                              timeout=TIME_LIMIT, check=False)
        failures.expect_equal("output that cannot be written", 1, done.returncode)
        failures.expect("output that cannot be written is reported", b"could not be written" in done.stderr)


def text_form(runner, folder, failures):
    lines = check(runner, folder, "bad.bas", "trap.bas").stdout.decode().split("\n")
    failures.expect("the first line", lines[0].startswith("bad.bas:1:11: error: ") and lines[0].endswith("[print-literal]"),
                    lines[0])
    failures.expect("a hint below it", lines[1].startswith("    "), lines[1])
    failures.expect("the second problem", lines[2].startswith("bad.bas:2:6: error: ") and "comparison-operator" in lines[2])
    failures.expect("the other file", lines[4].startswith("trap.bas:1:9: warning: "), lines[4])
    failures.expect_equal("the count", "2 errors, 1 warning", lines[6])


def json_form(runner, folder, failures):
    found = report(runner, folder, "bad.bas", "good.bas", "trap.bas")
    failures.expect_equal("json: members", {"version", "errors", "warnings", "scripts"}, set(found))
    failures.expect_equal("json: version", 1, found["version"])
    failures.expect_equal("json: errors", 2, found["errors"])
    failures.expect_equal("json: warnings", 1, found["warnings"])
    failures.expect_equal("json: scripts", ["bad.bas", "good.bas", "trap.bas"],
                          [script["script"] for script in found["scripts"]])
    failures.expect_equal("json: a good script", [], found["scripts"][1]["problems"])
    for problem in found["scripts"][0]["problems"]:
        failures.expect_equal("json: members of a problem",
                              {"file", "line", "column", "endColumn", "severity", "code", "message", "hint"}, set(problem))
    second = found["scripts"][0]["problems"][1]
    failures.expect_equal("json: the place", ("bad.bas", 2, 6, 8),
                          (second["file"], second["line"], second["column"], second["endColumn"]))


def require(failures, what, value, kind, **members):
    """A small schema: every member has its type, and no other is there."""
    failures.expect(what + ": type", isinstance(value, kind), type(value))
    if isinstance(value, dict):
        failures.expect_equal(what + ": members", set(members), set(value))
        for name, member in members.items():
            failures.expect("%s.%s: type" % (what, name), isinstance(value.get(name), member), value.get(name))


def sarif_form(runner, folder, failures):
    (folder / "a b%.bas").write_text("print 7 % 2\n")
    found = json.loads(check(runner, folder, "--format=sarif", "bad.bas", "a b%.bas").stdout)
    require(failures, "sarif", found, dict, **{"$schema": str, "version": str, "runs": list})
    failures.expect_equal("sarif: version", "2.1.0", found["version"])
    failures.expect_equal("sarif: one run", 1, len(found["runs"]))
    log = found["runs"][0]
    require(failures, "sarif: run", log, dict, tool=dict, columnKind=str, results=list)
    failures.expect("sarif: kind of columns", log["columnKind"] in ("utf16CodeUnits", "unicodeCodePoints"))
    driver = log["tool"]["driver"]
    require(failures, "sarif: driver", driver, dict, name=str, semanticVersion=str, rules=list)
    for rule in driver["rules"]:
        require(failures, "sarif: rule", rule, dict, id=str, shortDescription=dict, defaultConfiguration=dict)
        failures.expect("sarif: level of a rule", rule["defaultConfiguration"]["level"] in ("error", "warning"))
    identifiers = [rule["id"] for rule in driver["rules"]]
    failures.expect_equal("sarif: rules are told apart", len(identifiers), len(set(identifiers)))
    failures.expect_equal("sarif: results", 3, len(log["results"]))
    for result in log["results"]:
        require(failures, "sarif: result", result, dict, ruleId=str, ruleIndex=int, level=str, message=dict, locations=list)
        failures.expect_equal("sarif: rule of a result", result["ruleId"], identifiers[result["ruleIndex"]])
        failures.expect_equal("sarif: level of a result", result["level"],
                              driver["rules"][result["ruleIndex"]]["defaultConfiguration"]["level"])
        failures.expect("sarif: text", result["message"]["text"])
        place = result["locations"][0]["physicalLocation"]
        require(failures, "sarif: place", place, dict, artifactLocation=dict, region=dict)
        require(failures, "sarif: region", place["region"], dict, startLine=int, startColumn=int, endColumn=int)
        failures.expect("sarif: region in order", 1 <= place["region"]["startColumn"] <= place["region"]["endColumn"])
        failures.expect("sarif: a URI", re.fullmatch(r"(?:file://)?[A-Za-z0-9/._~%-]+",
                                                     place["artifactLocation"]["uri"]))
    failures.expect_equal("sarif: a name with a blank", "a%20b%25.bas",
                          log["results"][2]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"])
    whole = json.loads(check(runner, folder, "--format=sarif", str(folder / "bad.bas")).stdout)
    failures.expect_equal("sarif: an absolute path", "file://" + str(folder / "bad.bas"),
                          whole["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"])


def unreadable_files(runner, folder, failures):
    (folder / "dir.bas").mkdir()
    for name in ("missing.bas", "dir.bas"):
        found = report(runner, folder, name, "bad.bas")
        problems = found["scripts"][0]["problems"]
        failures.expect_equal(name + ": problems", [("unreadable-file", name, 1)],
                              [(problem["code"], problem["file"], problem["line"]) for problem in problems])
        failures.expect_equal(name + ": the other file is checked", 2, len(found["scripts"][1]["problems"]))
        failures.expect_equal(name + ": exit status", 1, check(runner, folder, name).returncode)
    if os.geteuid() != 0:
        (folder / "secret.bas").write_text("print 1\n")
        (folder / "secret.bas").chmod(0)
        failures.expect_equal("a file that may not be read", 1, check(runner, folder, "secret.bas").returncode)


def places(problems):
    return [(problem["file"], problem["line"], problem["column"], problem["code"]) for problem in problems]


def included_files(runner, folder, failures, seen):
    lib = folder / "lib"
    lib.mkdir()
    (lib / "tools.bas").write_text('\n\nfunction Twice(n)\n  Twice = n * 2\nendfunction\nsub bad()\n  x = nope + 1\nendsub\n')
    (lib / "text.bas").write_text('y = 5\nz = y >= 1\n')
    (lib / "procedures.bas").write_text("sub again()\nendsub\n")
    (folder / "main.bas").write_text('library "lib/tools.bas"\r\nprint Twice(4)\r\ninclude "lib/text.bas"\r\n'
                                     'print y; Twice()\r\nend\r\n')
    problems = report(runner, folder, "main.bas")["scripts"][0]["problems"]
    base = str(folder.resolve()) if problems and problems[-1]["file"].startswith("/") else None
    tools = next((problem["file"] for problem in problems if problem["file"].endswith("tools.bas")), None)
    text = next((problem["file"] for problem in problems if problem["file"].endswith("text.bas")), None)
    failures.expect_equal("problems of included files", [("main.bas", 4, 10, "procedure-arguments"),
                                                         (tools, 7, 7, "undefined-variable"),
                                                         (text, 2, 7, "comparison-in-expression")], places(problems))
    failures.expect("paths of included files", base is None or tools.startswith(base))
    (folder / "twice.bas").write_text('include "lib/procedures.bas"\ncall again()\nend\n')
    problems = report(runner, folder, "twice.bas")["scripts"][0]["problems"]
    failures.expect_equal("an include of procedures", ["procedure-in-flow", "included-twice"], [problem["code"] for problem in problems])
    seen.update(problem["code"] for problem in problems)
    seen.add("unreadable-file")
    (folder / "library.bas").write_text('library "lib/procedures.bas"\ncall again()\nend\n')
    failures.expect_equal("a library of procedures", [], report(runner, folder, "library.bas")["scripts"][0]["problems"])


def enciphered_scripts(runner, folder, failures):
    done = run([runner, "encrypt", "bad.bas", "secret.txt"], folder)
    failures.expect_equal("enciphering", 0, done.returncode)
    problems = report(runner, folder, "secret.txt")["scripts"][0]["problems"]
    failures.expect_equal("an enciphered script", [("secret.txt", 1, 11, "print-literal"),
                                                   ("secret.txt", 2, 6, "comparison-operator")], places(problems))


def host_functions(runner, folder, failures):
    (folder / "host.bas").write_text("print BatteryLevel(1)\nevent create low alarm\n")
    problems = report(runner, folder, "host.bas")["scripts"][0]["problems"]
    failures.expect_equal("functions that are not known", [(1, "unknown-function"), (2, "unknown-function")],
                          [(problem["line"], problem["code"]) for problem in problems])
    for arguments in (["--function=batterylevel,alarm"], ["--function=batterylevel", "--function", "alarm"]):
        found = report(runner, folder, *arguments, "host.bas")
        failures.expect_equal("functions of the host", [], found["scripts"][0]["problems"])


def odd_texts(runner, folder, failures):
    rows = [
        ("empty", b"", []),
        ("one line end", b"\r\n", []),
        ("no line end at the end", b"x = nope", [(1, 5)]),
        ("line ends of one sign", b"x = 1\rx = nope\rx = 2\r", [(2, 5)]),
        ("line ends of two signs", b"x = 1\r\nx = nope\r\n", [(2, 5)]),
        ("blank lines", b"\n\n\nx = nope\n", [(4, 5)]),
        ("tabs", b"\tx = nope\n", [(1, 6)]),
        ("signs beyond ASCII", "print \"äöü\"; nope + 1\n".encode(), [(1, 14)]),
        ("signs beyond 16 bits", "print \"\U0001F600\"; nope + 1\n".encode(), [(1, 13)]),
        ("bytes that are no UTF-8", b"print \"\xe4\"; nope + 1\n", [(1, 12)]),
    ]
    for name, data, expected in rows:
        (folder / "odd.bas").write_bytes(data)
        problems = report(runner, folder, "odd.bas")["scripts"][0]["problems"]
        failures.expect_equal(name, expected, [(problem["line"], problem["column"]) for problem in problems])
    # Nesting and loops without end come to an end.
    deep = {
        "parentheses": "x = " + "(" * 200000 + "1",
        "calls": "x = " + "len(" * 100000,
        "indices": "dim a[2]\nx = " + "a[" * 100000,
        "powers": "x = 1" + " ^ 1" * 100000,
        "ifs": "if 1 = 1 then\n" * 3000,
        "loops": "for i = 1 to 2\n" * 2000 + "next\n" * 2000,
        "jumps": "".join("a%d:\nx%d = 1\ngoto a%d\n" % (i, i, (i * 7) % 500) for i in range(500)),
    }
    for name, text in deep.items():
        (folder / "deep.bas").write_text(text)
        failures.expect("many " + name, check(runner, folder, "deep.bas").returncode in (0, 1))


# ---- the table of codes

def codes_tests(runner, failures, seen, guide):
    lines = run([runner, "check", "--codes"], None).stdout.decode().splitlines()
    codes = {line.split("\t")[0]: line.split("\t")[1] for line in lines}
    failures.expect_equal("codes without a case", [], sorted(set(codes) - seen))
    documented = dict(re.findall(r"^### ([a-z-]+) \((error|warning)\)$", guide.read_text(encoding="utf-8"), re.MULTILINE))
    failures.expect_equal("codes and severities in the guide", codes, documented)
    for code in codes:
        section = guide.read_text(encoding="utf-8").split("### %s (" % code, 1)[-1].split("\n### ", 1)[0]
        failures.expect("the guide shows %s" % code, "```" in section or code in ("unreadable-file", "byte-order-mark"))


def main():
    parser = argparse.ArgumentParser(description='Tests "brindle check".')
    parser.add_argument("--runner", required=True)
    parser.add_argument("--guide", type=Path, help="the page that documents the codes")
    parser.add_argument("cases", type=Path)
    arguments = parser.parse_args()
    runner = str(Path(arguments.runner).resolve())
    failures = Failures()
    seen = check_cases(runner, arguments.cases, failures)
    command_tests(runner, failures, seen)
    if arguments.guide is not None:
        codes_tests(runner, failures, seen, arguments.guide)
    print("%d checks, %d failed" % (failures.checks, failures.count))
    return 1 if failures.count else 0


if __name__ == "__main__":
    sys.exit(main())
