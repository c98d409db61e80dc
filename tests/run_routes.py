#!/usr/bin/env python3
"""Runs the script tests, the examples and the programs of the documentation on every route.

    run_routes.py --runner PATH SCRIPTS_DIR EXAMPLES_DIR
    run_routes.py --runner PATH --sweep 1-200 [--area AREA] SCRIPTS_DIR EXAMPLES_DIR

A program runs the same whether its statements are compiled or not, and wherever compiled ones give up: every test
passes with nothing compiled, with everything compiled at once, and with giving up at every k-th operation. Each area
of the tests has a k of its own, so that one pass tries many; --sweep tries every k of a range on every area. With
BRINDLE_SLOW_TESTS set, each area is tried with several.
"""

import argparse
import os
import shlex
import subprocess
import sys
from pathlib import Path

import run_scripts

LARGEST = 200
STEP = 37       # has no common factor with LARGEST: the areas' numbers are spread
SLOW_ROUNDS = 12


def numbers_of(index, rounds):
    """The numbers of operations for the area of that index."""
    return [(index * STEP + turn * 61) % LARGEST + 1 for turn in range(rounds)]


def run_area(runner, route, area, root, jobs):
    """Passed and failed tests of one area on one route."""
    command = "%s --route=%s" % (shlex.quote(str(runner)), route)
    time_limit = run_scripts.SLOW_TIME_LIMIT
    return run_scripts.run_all(run_scripts.Runner(command, time_limit), root, area, jobs,
                               lambda line: print("%s: %s" % (route, line)))


def run_examples(runner, route, examples):
    """Whether the examples pass; the runner is started by a script that adds the route."""
    wrapper = Path(os.environ.get("TMPDIR", "/tmp")) / ("brindle-route-%d" % os.getpid())
    wrapper.write_text('#!/bin/sh\nexec %s --route=%s "$@"\n' % (shlex.quote(str(runner)), route), encoding="utf-8")
    wrapper.chmod(0o755)
    try:
        driver = Path(__file__).parent / "run_examples.py"
        done = subprocess.run([sys.executable, str(driver), "--runner", str(wrapper), str(examples)],
                              capture_output=True, text=True, check=False)
    finally:
        wrapper.unlink()
    if done.returncode != 0:
        print("%s: the examples fail\n%s%s" % (route, done.stdout, done.stderr))
    return done.returncode == 0


def run_documentation(runner, route, source):
    """Whether the programs of the documentation show what stands there."""
    driver = Path(__file__).parent / "run_docs.py"
    done = subprocess.run([sys.executable, str(driver), "--runner", str(runner), "--route", route,
                           str(source / "README.md"), str(source / "docs")],
                          capture_output=True, text=True, check=False)
    if done.returncode != 0:
        print("%s: the documentation's programs fail\n%s%s" % (route, done.stdout, done.stderr))
    return done.returncode == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", type=Path, required=True)
    parser.add_argument("--sweep", help="every number of operations of a range, FIRST-LAST")
    parser.add_argument("--area", help="only the tests of this folder")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    parser.add_argument("tests_dir", type=Path)
    parser.add_argument("examples_dir", type=Path)
    arguments = parser.parse_args()
    runner, root = arguments.runner.resolve(), arguments.tests_dir.resolve()
    source = arguments.examples_dir.resolve().parent
    areas = [arguments.area] if arguments.area else sorted(path.name for path in root.iterdir() if path.is_dir())
    slow = bool(os.environ.get("BRINDLE_SLOW_TESTS"))

    passed = failed = 0
    if arguments.sweep:
        first, last = (int(number) for number in arguments.sweep.split("-"))
        routes = {area: ["eager:%d" % number for number in range(first, last + 1)] for area in areas}
        shared = routes[areas[0]]
    else:
        rounds = SLOW_ROUNDS if slow else 1
        routes = {area: ["parser", "eager"] + ["eager:%d" % number for number in numbers_of(index, rounds)]
                  for index, area in enumerate(areas)}
        shared = ["parser", "eager", "eager:7"]
    for turn in range(max(len(of_area) for of_area in routes.values())):
        before = failed
        for area in areas:
            counts = run_area(runner, routes[area][turn], area, root, arguments.jobs)
            passed, failed = passed + counts[0], failed + counts[1]
        if arguments.sweep and not arguments.area:
            shown = run_documentation(runner, shared[turn], source)
            passed, failed = passed + shown, failed + (not shown)
        if arguments.sweep:
            print("%s: %d failed" % (shared[turn], failed - before), flush=True)
    if not arguments.area and not arguments.sweep:
        for route in shared:
            for shown in (run_examples(runner, route, arguments.examples_dir.resolve()),
                          run_documentation(runner, route, source)):
                passed, failed = passed + shown, failed + (not shown)
    if passed == 0:
        print("no tests found in %s" % root)
        failed += 1
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
