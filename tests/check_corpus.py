#!/usr/bin/env python3
"""Checks every script test, every example and every script of the documentation with "brindle check".

A script that is known to run without an error must get no error, and what is
said of the others is counted.  Each is checked in a fresh folder that holds
what it would find when it runs.

    python3 tests/check_corpus.py --runner build/release/brindle tests/scripts examples docs
    python3 tests/check_corpus.py --runner ... --warnings    lists every warning on scripts without an error
    python3 tests/check_corpus.py --runner ... --missed      lists scripts whose errors are not foreseen
"""

import argparse
import concurrent.futures
import json
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import doc_pages
import run_scripts

TIME_LIMIT = 30.0

# What the host of an example registers.
HOST_FUNCTIONS = {
    "battery.bas": "batterylevel",
    "watchdog.bas": "sounder",
}

class Result:
    def __init__(self, script, clean, numbers, problems):
        self.script = script
        self.clean = clean
        self.numbers = numbers
        self.problems = problems

    def of(self, severity):
        return [problem for problem in self.problems if problem["severity"] == severity]


def expectations_of(script):
    """Whether a script runs without an error, and the numbers of those that it expects."""
    if script.suffix == ".bas" and (script.with_suffix(".expected").exists() or "examples" in script.parts):
        return True, []
    expectations = run_scripts.Expectations(script)
    if expectations.stderr is not None:
        return expectations.exit_status == 0, []
    return not expectations.errors and expectations.exit_status == 0, [error.number for error in expectations.errors]


def check(runner, script):
    clean, numbers = expectations_of(script)
    with tempfile.TemporaryDirectory(prefix="brindle-check-") as box:
        folder = Path(box) / "run"
        data = script.with_suffix(".data")
        shared = script.parent / "include"
        if "examples" in script.parts:
            shutil.copytree(script.parent, folder)
        elif data.is_dir():
            shutil.copytree(data, folder)
        else:
            folder.mkdir()
        if shared.is_dir():
            shutil.copytree(shared, folder / "include", dirs_exist_ok=True)
        if not (folder / script.name).exists():
            shutil.copy(script, folder / script.name)
        command = [runner, "check", "--format=json", script.name]
        if script.name in HOST_FUNCTIONS:
            command.append("--function=" + HOST_FUNCTIONS[script.name])
        if not ("examples" in script.parts):
            codepage = [option for option in run_scripts.Expectations(script).options if option.startswith("--codepage")]
            command += codepage
        return Result(script, clean, numbers, problems_of(command, folder, script))


def problems_of(command, folder, name):
    done = subprocess.run(command, cwd=folder, capture_output=True, timeout=TIME_LIMIT, stdin=subprocess.DEVNULL)
    if done.returncode not in (0, 1) or done.stderr:
        raise RuntimeError("%s: exit status %d, %s" % (name, done.returncode, done.stderr.decode(errors="replace")))
    report = json.loads(done.stdout)
    if (done.returncode == 1) != (report["errors"] > 0):
        raise RuntimeError("%s: exit status %d with %d errors" % (name, done.returncode, report["errors"]))
    return report["scripts"][0]["problems"]


def check_page(runner, path):
    """The scripts of a page that run there, each beside the files that the page stores for it."""
    results = []
    try:
        page = doc_pages.read_page(path)
    except doc_pages.Fault:
        return []  # the test of the documentation says so
    with tempfile.TemporaryDirectory(prefix="brindle-check-") as box:
        for number, example in enumerate(page.examples):
            fence = example.fence
            if number == 0 or "keep" not in fence.words:
                folder = Path(box) / str(number)
                folder.mkdir()
            name = fence.words.get("name", "example.bas")
            for stored, text in [(file.words["name"], file.text) for file in example.files] + [(name, fence.text)]:
                (folder / stored).parent.mkdir(parents=True, exist_ok=True)
                (folder / stored).write_text(text, encoding="utf-8")
            if fence.kind != "basic":
                continue
            clean = "errors" not in example.results and fence.words.get("exit", "0") == "0"
            problems = problems_of([runner, "check", "--format=json", name], folder, "%s:%d" % (path, fence.line))
            results.append(Result("%s:%d" % (path, fence.line), clean, [], problems))
    return results


def shown(script, problem):
    return "%s:%d:%d: %s: %s [%s]" % (script, problem["line"], problem["column"], problem["severity"],
                                     problem["message"], problem["code"])


def main():
    parser = argparse.ArgumentParser(description="Checks the script tests and the examples.")
    parser.add_argument("--runner", required=True)
    parser.add_argument("--warnings", action="store_true", help="lists every warning on scripts without an error")
    parser.add_argument("--missed", action="store_true", help="lists scripts whose errors are not foreseen")
    parser.add_argument("folders", nargs="+", type=Path)
    arguments = parser.parse_args()
    runner = str(Path(arguments.runner).resolve())

    scripts = sorted(script for folder in arguments.folders for script in folder.rglob("*.bas")
                     if not any(part.endswith(".data") or part == "include" for part in script.parts))
    pages = sorted(page for folder in arguments.folders for page in (folder.rglob("*.md") if folder.is_dir() else [folder]))
    pages = [page for page in pages if "scripts" not in page.parts]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda script: check(runner, script), scripts))
        for found in pool.map(lambda page: check_page(runner, page), pages):
            results += found
    faults = [shown(result.script, problem) for result in results if result.clean for problem in result.of("error")]
    for fault in faults:
        print(fault)
    if arguments.warnings:
        for result in results:
            if result.clean:
                for problem in result.of("warning"):
                    print(shown(result.script, problem))
    failing = [result for result in results if not result.clean]
    missed = [result for result in failing if not result.of("error")]
    if arguments.missed:
        for result in missed:
            print("%s: %s" % (result.script, result.numbers))
    clean = [result for result in results if result.clean]
    print("%d scripts without an error: %d errors reported, %d warnings" %
          (len(clean), len(faults), sum(len(result.of("warning")) for result in clean)))
    print("%d scripts with errors: %d foreseen" % (len(failing), len(failing) - len(missed)))
    if not results:
        print("no scripts found")
    return 1 if faults or not results else 0


if __name__ == "__main__":
    sys.exit(main())
