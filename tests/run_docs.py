#!/usr/bin/env python3
"""Runs every example of the documentation and compares what it shows with what happens.

Usage: run_docs.py --runner BRINDLE [--compiler CXX --source DIR --library DIR] [--only TEXT] [--list] PAGE-OR-FOLDER...
       run_docs.py --runner BRINDLE --self-test

What the fences say: tests/README.md, "Examples of the documentation".
"""

import argparse
import concurrent.futures
import contextlib
import difflib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

from doc_pages import Fault, check_links, find_pages, read_page

TIME_LIMIT = 60.0 if os.environ.get("BRINDLE_SLOW_TESTS") else 20.0
COMPILE_LIMIT = 600.0

# What a console example names but a test does not do: it would install, build the project or need its checkout.
NOT_RUN = {"sudo", "apt", "apt-get", "git", "cmake", "ctest", "make", "ninja", "./dev", "man", "python3", "cd"}


class Difference(Exception):
    pass


def compare(where, what, expected, got):
    # A fence cannot show that the last line feed is missing.
    if got != expected and got + "\n" != expected:
        diff = difflib.unified_diff(expected.splitlines(), got.splitlines(), "shown", "happens", lineterm="")
        raise Difference(f"{where}: {what} differs\n" + "\n".join("    " + line for line in diff))


class Bench:
    """Runs the examples of one page, each in a fresh folder unless it keeps the one before."""

    def __init__(self, options, box):
        self.options = options
        self.box = pathlib.Path(box)
        self.count = 0
        self.home = None
        self.stored = set()  # the lines of the fences whose files are in the folder
        self.not_run = []
        self.follows_other = False
        self.built = {}  # server libraries, by the line of their fence
        tools = self.box / "bin"
        tools.mkdir()
        (tools / "brindle").symlink_to(options.starter)
        self.environment = {key: value for key, value in os.environ.items()
                            if key not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "BRINDLE_DEVICES")}
        self.environment.update(PATH=f"{tools}:{os.environ['PATH']}", TZ="UTC", LC_ALL="C.UTF-8")
        if options.compiler:
            (tools / "c++").symlink_to(shutil.which(options.compiler))
            (self.box / "brindle.pc").write_text(
                "Name: brindle\nDescription: the library of the build folder\n"
                f"Version: {self.version()}\n"
                f"Cflags: -I{options.source}/include\n"
                f"Libs: -L{options.library} -Wl,-rpath,{options.library} -lbrindle {options.flags}\n", encoding="utf-8")
            self.environment["PKG_CONFIG_PATH"] = str(self.box)

    def version(self):
        header = (self.options.source / "include/brindle/version.h").read_text(encoding="utf-8")
        return re.search(r'define BRINDLE_VERSION "([^"]+)"', header).group(1)

    def has_route(self, example):
        """Whether the example is a program of its own: no host, no commands, nothing that those have left, and no limit
        of memory, of which the routes need different amounts."""
        words = example.fence.words
        own = example.fence.kind == "basic" and "--max-memory" not in words.get("options", "") and \
            all(file.kind != "cpp" for file in example.files)
        if "keep" not in words:
            self.follows_other = False
        self.follows_other = self.follows_other or not own
        return not self.follows_other

    def prepare(self, example):
        if "keep" not in example.fence.words or self.home is None:
            self.count += 1
            self.home = self.box / str(self.count)
            (self.home / "here").mkdir(parents=True)
            self.stored = set()
            self.environment.update(HOME=str(self.home), XDG_DATA_HOME=str(self.home / "data"),
                                    XDG_RUNTIME_DIR=str(self.home))
        for file in example.files:
            library = self.built.get(file.line)
            if library and library.parent != self.folder:
                shutil.copy(library, self.folder)
            if file.line not in self.stored:
                path = self.folder / file.words["name"]
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(file.text, encoding="utf-8")
                self.stored.add(file.line)

    @property
    def folder(self):
        return self.home / "here"

    def run(self, command, given="", limit=TIME_LIMIT, merged=False):
        try:
            done = subprocess.run(command, cwd=self.folder, env=self.environment, input=given.encode(), timeout=limit,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT if merged else subprocess.PIPE,
                                  check=False)
        except subprocess.TimeoutExpired as problem:
            raise Difference(f"it did not end within {limit:.0f} seconds") from problem
        return done.returncode, done.stdout.decode(errors="replace"), (done.stderr or b"").decode(errors="replace")

    def play(self, example):
        where = f"{example.fence.page}:{example.fence.line}"
        needed = example.fence.words.get("needs")
        if needed and not (pathlib.Path(self.options.runner).resolve().parent / f"libbrindle-{needed}.so").exists():
            self.not_run.append(f"{where}: this build has no {needed}")
            return
        if self.options.route and not self.has_route(example):
            self.not_run.append(f"{where}: this is no program by itself")
            return
        self.prepare(example)
        try:
            getattr(self, "play_" + example.fence.kind)(example)
        except Difference as problem:
            text = str(problem)
            raise Difference(text if text.startswith(str(example.fence.page)) else f"{where}: {text}") from problem
        for shown in example.made:
            path = self.folder / shown.words["name"]
            if not path.exists():
                raise Difference(f"{shown.page}:{shown.line}: the file {path.name} was not made")
            compare(f"{shown.page}:{shown.line}", path.name, shown.text, path.read_text(encoding="utf-8"))

    def check_run(self, example, command):
        fence, results = example.fence, example.results
        given = results["input"].text if "input" in results else ""
        status, output, errors = self.run(command, given)
        shown = results.get("errors")
        if shown is None and errors and "prompts" not in fence.words:
            raise Difference("unexpected text on the standard error\n" +
                             "\n".join("    " + line for line in errors.splitlines()))
        at = results.get("output", fence)
        compare(f"{at.page}:{at.line}", "the output", results["output"].text if "output" in results else "", output)
        if shown is not None:
            compare(f"{shown.page}:{shown.line}", "the standard error", shown.text, errors)
        wanted = [int(fence.words["exit"])] if "exit" in fence.words else [0] if shown is None else [0, 1]
        if status not in wanted:
            raise Difference(f"exit status {status}\n{errors}")

    def play_basic(self, example):
        name = example.fence.words.get("name", "example.bas")
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(example.fence.text, encoding="utf-8")
        self.check_run(example, ["brindle", "--ui=console", *shlex.split(example.fence.words.get("options", "")), name])

    def play_console(self, example):
        fence = example.fence
        if not fence.text.startswith("$ "):
            raise Difference('a console example begins with "$ "')
        line = fence.line
        for block in re.split(r"^(?=\$ )", fence.text, flags=re.MULTILINE)[1:]:
            command, _, shown = block.partition("\n")
            command = command[2:]
            while command.endswith("\\"):
                more, _, shown = shown.partition("\n")
                command = command[:-1] + more.removeprefix(">")
            words = [word for word in shlex.split(command, comments=True) if not re.match(r"^\w+=", word)]
            # A program of the page itself can be run.
            own = len(words) > 1 and (self.folder / words[1]).is_file()
            if words[0] in NOT_RUN and not own:
                self.not_run.append(f"{fence.page}:{line + 1}: {command}")
            else:
                _, output, _ = self.run(["bash", "-c", command], limit=COMPILE_LIMIT, merged=True)
                compare(f"{fence.page}:{line + 1}", f'what "{command}" shows', shown, output)
            line += block.count("\n")

    def play_cpp(self, example):
        fence, options = example.fence, self.options
        if not options.compiler:
            raise Difference("a C++ example needs --compiler, --source and --library")
        base = [options.compiler, "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", *shlex.split(options.flags),
                f"-I{options.source}/include"]
        text = fence.text
        name = fence.words.get("name", "example.cpp")
        if "part" in fence.words:
            heads = [line for line in text.split("\n") if line.startswith("#include")]
            rest = [line for line in text.split("\n") if not line.startswith("#include")]
            text = "\n".join([*heads, fence.before, "void Part();", "void Part() {", *rest, "}", ""])
        elif "name" not in fence.words:
            raise Difference("a C++ example needs name=, or the word part")
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        if "part" in fence.words:
            command = [*base, "-Wno-unused", "-fsyntax-only", name]
        elif "shared" in fence.words:
            command = [*base, "-shared", "-fPIC", name, "-o", str(pathlib.PurePath(name).with_suffix(".so"))]
        else:
            command = [*base, name, "-o", "program"]
        libraries = [f"-L{options.library}", f"-Wl,-rpath,{options.library}", "-lbrindle"]
        if "qt_user_interface.h" in text:
            libraries.append("-lbrindle-qt")
        status, output, _ = self.run([*command, *libraries], limit=COMPILE_LIMIT, merged=True)
        if status != 0:
            raise Difference("it does not compile\n" + output)
        if "shared" in fence.words:
            self.built[fence.line] = path.with_suffix(".so")
        elif "part" not in fence.words:
            self.check_run(example, ["./program"])


def play_page(page, options):
    problems, not_run = [], []
    with tempfile.TemporaryDirectory(prefix="docs-") as box:
        bench = Bench(options, box)
        for example in page.examples:
            try:
                bench.play(example)
            except Difference as problem:
                problems.append(str(problem))
        not_run = bench.not_run
    return problems, not_run


@contextlib.contextmanager
def starter(options):
    """What starts the runner: itself, or a script that adds the route."""
    runner = pathlib.Path(options.runner).resolve()
    if not options.route:
        yield runner
        return
    # Made before there are threads: a program that another one starts meanwhile would hold the script open for writing.
    with tempfile.TemporaryDirectory(prefix="docs-route-") as folder:
        script = pathlib.Path(folder) / "brindle"
        script.write_text(f'#!/bin/sh\nexec {shlex.quote(str(runner))} --route={options.route} "$@"\n', encoding="utf-8")
        script.chmod(0o755)
        yield script


def check(options):
    pages, problems, not_run = [], [], []
    for path in find_pages(options.places):
        try:
            pages.append(read_page(path))
        except Fault as fault:
            problems.append(str(fault))
    problems += check_links(pages)
    count = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        wanted = [page for page in pages if options.only in str(page.path)]
        for page, (faults, left) in zip(wanted, pool.map(lambda one: play_page(one, options), wanted)):
            problems += faults
            not_run += left
            count += len(page.examples)
    return len(pages), count, not_run, problems


GOOD_PAGE = """# Good
```text name=data.txt
one
```
## Runs
```basic prompts
open "data.txt" for input as 1 text
print readline(1)
x = ask("Go on?")
print x
```
```output
one
0
```
```basic exit=1
print "a" ; nope(
```
```errors
Undefined function name
print "a" ; nope(
```
```console
$ brindle --ui=console missing.bas 2>/dev/null || echo failed
failed
```
[up](#good)
"""

# Every one has the fault that its text names.
FAULTY_PAGES = {
    "the output differs": '```basic\nprint "a"\n```\n```output\nb\n```\n',
    "the output differs ": '```basic\nprint "a"\n```\n',
    "unexpected text on the standard error": "```basic\nprint nope()\n```\n",
    "the standard error differs": "```basic\nprint nope()\n```\n```errors\nSyntax error\n```\n",
    "exit status 0": "```basic exit=1\nx = 1\n```\n",
    "without an example": "```output\na\n```\n",
    "unknown kind of fence": "```basix\nx = 1\n```\n",
    "a fence without a language": "```\nx\n```\n",
    "knows no word": "```basic kept\nx = 1\n```\n",
    "a fence without an end": "```basic\nx = 1\n",
    "no example uses it": "```text name=a.txt\na\n```\n",
    "an indented block": "text\n\n    print 1\n",
    "the file a.txt was not made": "```basic\nx = 1\n```\n```file name=a.txt\n1\n```\n",
    'what "brindle a.bas" shows differs': "```console\n$ brindle a.bas\nhello\n```\n",
    "no such heading": "[a](#nowhere)\n",
    "no such file": "[a](nowhere.md)\n",
    "needs --compiler": "```cpp name=a.cpp\nint main() {}\n```\n",
}


def self_test(options):
    failed = 0
    with tempfile.TemporaryDirectory(prefix="docs-") as folder:
        page = pathlib.Path(folder) / "page.md"
        options.places, options.only, options.compiler = [page], "", None
        page.write_text(GOOD_PAGE, encoding="utf-8")
        for problem in check(options)[3]:
            failed += 1
            print("FAIL the good page:", problem)
        for wanted, text in FAULTY_PAGES.items():
            page.write_text("# Page\n" + text, encoding="utf-8")
            problems = check(options)[3]
            if len(problems) != 1 or wanted.strip() not in problems[0] or not problems[0].startswith(str(page)):
                failed += 1
                print("FAIL", wanted, problems)
    print(f"{1 + len(FAULTY_PAGES) - failed} pages judged as they should be, {failed} not")
    return 1 if failed else 0


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runner", required=True)
    parser.add_argument("--compiler")
    parser.add_argument("--route", help="run the programs by this route; hosts and commands are left out")
    parser.add_argument("--flags", default="")
    parser.add_argument("--source", help="the folder that holds include/")
    parser.add_argument("--library", help="the folder that holds libbrindle.so")
    parser.add_argument("--only", default="", help="only pages whose path contains this")
    parser.add_argument("--list", action="store_true", help="name what is not run")
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("places", nargs="*")
    options = parser.parse_args()
    for folder in ("source", "library"):
        if getattr(options, folder):
            setattr(options, folder, pathlib.Path(getattr(options, folder)).resolve())
    with starter(options) as options.starter:
        if options.self_test:
            return self_test(options)
        pages, examples, not_run, problems = check(options)
    for problem in problems:
        print("FAIL " + problem)
    if options.list:
        print("\n".join("not run: " + command for command in not_run))
    print(f"{pages} pages, {examples} examples, {len(problems)} faults, {len(not_run)} not run")
    return 1 if problems or not examples else 0


if __name__ == "__main__":
    sys.exit(main())
