#!/usr/bin/env python3
"""The runner's command line: commands, help, version, traces, manual pages and completion.

Usage: run_commands.py --runner BRINDLE --source SOURCE_DIR
"""

import argparse
import os
import pty
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import checks
from checks import check

COMMANDS = ("run", "check", "encrypt", "register", "unregister")


class Place:
    def __init__(self, runner, folder):
        self.runner = runner
        self.folder = folder

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def brindle(self, *words, **options):
        return subprocess.run([self.runner, *words], cwd=self.folder, capture_output=True, text=True, check=False,
                              stdin=subprocess.DEVNULL, **options)


def commands(place):
    place.write("hello.bas", 'print "hello"\n')
    place.write("run", 'print "a script called run"\n')
    place.write("encrypt", 'print "a script called encrypt"\n')
    cases = [
        (["hello.bas"], 0, "hello\n"),
        (["run", "hello.bas"], 0, "hello\n"),
        (["run", "--ui=console", "hello.bas"], 0, "hello\n"),
        (["--ui=console", "hello.bas"], 0, "hello\n"),
        (["hello.bas", "--on-error=abort"], 0, "hello\n"),
        (["run", "run"], 0, "a script called run\n"),
        (["./run"], 0, "a script called run\n"),
        (["--ui=console", "run"], 0, "a script called run\n"),
        (["./encrypt"], 0, "a script called encrypt\n"),
        (["run", "encrypt"], 0, "a script called encrypt\n"),
        (["run"], 2, ""),
        (["run", "hello.bas", "hello.bas"], 2, ""),
        (["run", "--nonsense", "hello.bas"], 2, ""),
        (["encrypt", "--nonsense"], 2, ""),
        (["run", "--version"], 2, ""),
        ([], 2, ""),
    ]
    for words, status, printed in cases:
        done = place.brindle(*words)
        check("brindle " + " ".join(words), (done.returncode, done.stdout) == (status, printed) and
              bool(done.stderr) == (status == 2), repr((done.returncode, done.stdout, done.stderr)))


def help_texts(place):
    done = place.brindle("--help")
    check("help is no error", done.returncode == 0 and not done.stderr, done.stderr)
    for command in COMMANDS:
        check("help names " + command, re.search(r"^  brindle %s\b" % command, done.stdout, re.MULTILINE), done.stdout)
        own = place.brindle(command, "--help")
        check(command + " has a help of its own", own.returncode == 0 and "brindle %s" % command in own.stdout,
              own.stdout + own.stderr)


def version(place, source):
    done = place.brindle("--version")
    lines = done.stdout.splitlines()
    header = (source / "include/brindle/version.h").read_text(encoding="utf-8")
    number = re.search(r'BRINDLE_VERSION "([\d.]+)"', header).group(1)
    check("the version stands first", done.returncode == 0 and lines[:1] == ["brindle " + number], done.stdout)
    parts = dict(line.split(": ", 1) for line in lines[1:])
    check("the parts are told", list(parts) == ["commit", "compiler", "window system", "D-Bus", "components",
                                               "line editing"], done.stdout)
    check("the commit has a form", re.fullmatch(r"unknown|[0-9a-f]{12,}(-modified)?", parts.get("commit", "")),
          done.stdout)
    check("the class that ships is found", "Brindle.FileSystem" in parts.get("components", ""), done.stdout)
    with tempfile.TemporaryDirectory(prefix="brindle-plug-ins-") as box:
        (Path(box) / "libbrindle-qt.so").write_bytes(b"")
        done = place.brindle("--version", env=dict(os.environ, BRINDLE_PLUGINS=box))
        check("plug-ins are looked for where they are loaded from",
              "window system: %s/libbrindle-qt.so\n" % box in done.stdout, done.stdout)


def commit_header(source):
    """The header that names the commit is written for another commit only."""
    script = source / "cmake" / "write_commit.cmake"

    def write(tree, header):
        subprocess.run(["cmake", "-D", "SOURCE=%s" % tree, "-D", "HEADER=%s" % header, "-P", str(script)], check=True,
                       capture_output=True)
        return header.read_text(encoding="utf-8"), header.stat().st_mtime_ns

    with tempfile.TemporaryDirectory(prefix="brindle-commit-") as box:
        tree = Path(box) / "tree"
        inner = tree / "inner"
        inner.mkdir(parents=True)
        header = Path(box) / "commit.h"
        environment = dict(os.environ, GIT_CONFIG_GLOBAL="/dev/null", GIT_CONFIG_SYSTEM="/dev/null")

        def git(*words):
            subprocess.run(["git", "-c", "user.name=n", "-c", "user.email=e", *words], cwd=tree, check=True,
                           capture_output=True, env=environment)

        check("without a history it is unknown", '"unknown"' in write(tree, header)[0])
        git("init")
        (tree / "a").write_text("1")
        git("add", "a")
        git("commit", "-m", "one")
        first = write(tree, header)
        check("with one it is the commit", re.search(r'"[0-9a-f]{12}"', first[0]), first[0])
        check("the same commit leaves it alone", write(tree, header) == first)
        (tree / "a").write_text("2")
        check("a change is told", re.search(r'"[0-9a-f]{12}-modified"', write(tree, header)[0]))
        check("a tree in somebody else's is unknown", '"unknown"' in write(inner, header)[0])


def traces(place):
    place.write("part.bas", "end\nsub Work(n)\n\tnext\nendsub\n")
    place.write("main.bas", 'library "part.bas"\nx = 1\ncall Work(1)\n')
    stated = "Illegal NEXT statement.\n\n\tnext\n"
    detail = "part.bas:3:2\n 3 | \tnext\n   | \t^\n  in Work, called at main.bas:3\n"
    done = place.brindle("main.bas")
    check("without a terminal the stated text stands alone", (done.returncode, done.stderr) == (1, stated), done.stderr)
    done = place.brindle("--trace", "main.bas")
    check("--trace adds the place", (done.returncode, done.stderr) == (1, stated + detail), done.stderr)
    done = place.brindle("--trace", "nowhere.bas")
    check("a script that is not there is named", done.stderr.endswith("\nnowhere.bas\n"), done.stderr)

    # A terminal is shown the place anyway.
    leader, follower = pty.openpty()
    done = subprocess.run([place.runner, "--ui=console", "--on-error=abort", "main.bas"], cwd=place.folder,
                          stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=follower, check=False)
    os.close(follower)
    shown = b""
    try:
        while chunk := os.read(leader, 65536):
            shown += chunk
    except OSError:
        pass
    os.close(leader)
    shown = shown.decode().replace("\r\n", "\n")
    check("a terminal is shown the place", (done.returncode, shown) == (1, stated + detail), shown)

    place.write("secret.bas", "a = 1\n  next\n")
    check("enciphering works", place.brindle("encrypt", "secret.bas", "sealed.bas").returncode == 0)
    done = place.brindle("--trace", "sealed.bas")
    check("of an enciphered script the place is shown alone",
          done.stderr == "Illegal NEXT statement.\n\n  next\nsealed.bas:2:3\n", done.stderr)

    place.write("deep.bas", "x = f(30)\nend\nfunction f(n)\nf = n\nif n = 0 then\nnext\nelse\nf = f(n - 1)\nendif\n"
                            "endfunction\n")
    done = place.brindle("--trace", "deep.bas")
    check("of many calls the innermost are shown", done.stderr.count("  in f, called at deep.bas:8\n") == 12 and
          done.stderr.endswith("  and 19 calls more\n"), done.stderr)


def manual_pages(source):
    pages = sorted((source / "docs").glob("*.1"))
    check("there are manual pages", len(pages) >= 4, str(pages))
    for page in pages:
        if shutil.which("man"):
            done = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(page)],
                                  capture_output=True, text=True, check=False, env=dict(os.environ, MANROFFSEQ=""))
            check(page.name + " is formatted without a warning", done.returncode == 0 and not done.stderr, done.stderr)
        if shutil.which("mandoc"):
            done = subprocess.run(["mandoc", "-Tlint", "-Wwarning", str(page)], capture_output=True, text=True,
                                  check=False)
            check(page.name + " has no fault", done.returncode == 0, done.stdout + done.stderr)
    if not shutil.which("man") and not shutil.which("mandoc"):
        print("neither man nor mandoc is there: manual pages are not formatted")


def complete(source, folder, line):
    """What bash offers at the end of the line."""
    program = r'''
source "$1"
COMP_LINE=$2
COMP_POINT=${#COMP_LINE}
eval "COMP_WORDS=($3)"
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_brindle
printf '%s\n' "${COMPREPLY[@]}"
'''
    # As bash splits it: "=" is a word of its own.
    words = re.findall(r"=|[^\s=]+", line)
    if line.endswith((" ", )):
        words.append("")
    done = subprocess.run(["bash", "-c", program, "bash", str(source / "completions" / "brindle.bash"), line,
                           " ".join(shlex.quote(word) for word in words)], cwd=folder, capture_output=True, text=True,
                          check=False)
    check("completion of %r works" % line, not done.stderr, done.stderr)
    return {word for word in done.stdout.splitlines() if word}


def completion(place, source):
    folder = place.folder / "completion"
    (folder / "scripts").mkdir(parents=True)
    for name in ("main.bas", "other.bas", "notes.txt", "server.so"):
        (folder / name).write_text("")
    names = {"main.bas", "other.bas", "scripts"}
    cases = [
        ("brindle ", names | {"run", "check", "encrypt", "register", "unregister"}),
        ("brindle m", {"main.bas"}),
        ("brindle ru", {"run"}),
        ("brindle run ", names),
        ("brindle --ui=", {"auto", "window", "console"}),
        ("brindle --ui=c", {"console"}),
        ("brindle --on-error ", {"ask", "continue", "abort"}),
        ("brindle --on-error=a", {"ask", "abort"}),
        ("brindle --tr", {"--trace"}),
        ("brindle run --v", set()),
        ("brindle --v", {"--version"}),
        ("brindle encrypt ", names),
        ("brindle encrypt main.bas n", {"notes.txt"}),
        ("brindle register ", {"server.so", "scripts"}),
        ("brindle register --", {"--help"}),
        ("brindle --ui=console ma", {"main.bas"}),
        ("brindle check --format=s", {"sarif"}),
        ("brindle --forbid=s", {"serial"}),
        ("brindle --root=", {"scripts"}),
        ("brindle --max-depth=", set()),
        ("brindle check --co", {"--codepage=", "--codes"}),
    ]
    for line, expected in cases:
        offered = complete(source, folder, line)
        check("completion of %r" % line, offered == expected, str(offered))

    # Every option that the help names is offered, and no other.
    for command in ("", *COMMANDS):
        text = place.brindle(*([command] if command else []), "--help").stdout
        known = set(re.findall(r"^  (?:-\w,)?(--[\w-]+)", text, re.MULTILINE))
        offered = {word.rstrip("=") for word in complete(source, folder, " ".join(["brindle", command, "--"]).replace(
            "  ", " "))}
        check("options of %r" % command, known == offered, "%s, offered %s" % (sorted(known), sorted(offered)))
        for shell in ("_brindle", "brindle.fish"):
            script = (source / "completions" / shell).read_text(encoding="utf-8")
            missing = [option for option in known if option not in script and
                       " -l " + option.removeprefix("--") + " " not in script]
            check("%s knows the options of %r" % (shell, command), not missing, str(missing))
    for shell, name in (("bash", "brindle.bash"), ("zsh", "_brindle"), ("fish", "brindle.fish")):
        if shutil.which(shell):
            done = subprocess.run([shell, "-n", str(source / "completions" / name)], capture_output=True, text=True,
                                  check=False)
            check("%s reads its completion" % shell, done.returncode == 0, done.stderr)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True)
    parser.add_argument("--source", required=True, type=Path)
    options = parser.parse_args()
    options.source = options.source.resolve()
    with tempfile.TemporaryDirectory(prefix="brindle-commands-") as box:
        place = Place(str(Path(options.runner).resolve()), Path(box))
        commands(place)
        help_texts(place)
        version(place, options.source)
        commit_header(options.source)
        traces(place)
        manual_pages(options.source)
        completion(place, options.source)
    return checks.status()


if __name__ == "__main__":
    sys.exit(main())
