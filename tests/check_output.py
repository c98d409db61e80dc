#!/usr/bin/env python3
"""Runs a command and compares what it prints with a stored text."""

import argparse
import difflib
import subprocess
import sys
from pathlib import Path


def main():
    parser = argparse.ArgumentParser(description="Runs COMMAND; status 0, EXPECTED on standard output, no errors.")
    parser.add_argument("--expected", required=True, type=Path)
    parser.add_argument("--limit", type=float, default=30.0, help="seconds before the command is ended")
    parser.add_argument("command", nargs="+")
    arguments = parser.parse_args()
    done = subprocess.run(arguments.command, stdin=subprocess.DEVNULL, capture_output=True, timeout=arguments.limit)
    expected = arguments.expected.read_text(encoding="utf-8")
    printed = done.stdout.decode("utf-8", "backslashreplace")
    sys.stdout.writelines(difflib.unified_diff(expected.splitlines(True), printed.splitlines(True), "expected", "printed"))
    sys.stdout.write(done.stderr.decode("utf-8", "backslashreplace"))
    if done.returncode != 0:
        print("exit status %d" % done.returncode)
    return 0 if printed == expected and not done.stderr and done.returncode == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
