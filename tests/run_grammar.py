#!/usr/bin/env python3
"""Runs the tests of the editors' grammar and extension, which need node and two packages of npm.

Without them nothing is tested: the status is then 77 and the reason is printed.
./dev grammar fetches what is missing.
"""

import argparse
import shutil
import subprocess
import sys
from pathlib import Path

FOLDER = Path(__file__).resolve().parent / "grammar"
SKIPPED = 77


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", required=True, help="the interpreter's path")
    parser.add_argument("--tokens", required=True, help="the path of list_tokens")
    parser.add_argument("source", help="the source folder")
    arguments = parser.parse_args()
    node = shutil.which("node")
    if node is None:
        print("skipped: node is not installed; ./dev grammar installs it")
        return SKIPPED
    if not all((FOLDER / "node_modules" / package).is_dir() for package in ("vscode-textmate", "vscode-oniguruma")):
        print("skipped: the packages of tests/grammar/package.json are not there; ./dev grammar fetches them")
        return SKIPPED
    checks = [[node, str(FOLDER / "check_grammar.mjs"), arguments.tokens, arguments.source],
              [node, str(FOLDER / "check_extension.mjs"), arguments.runner, arguments.source]]
    return max(subprocess.run(check, check=False).returncode != 0 for check in checks)


if __name__ == "__main__":
    sys.exit(main())
