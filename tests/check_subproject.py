#!/usr/bin/env python3
"""The library as a part of somebody else's CMake project, by add_subdirectory and by FetchContent.

Usage: check_subproject.py --source SOURCE_DIR [--compiler COMPILER]

The projects are configured, and what they would build is looked at: the library and its plug-ins, but neither tests
nor runner nor examples. With BRINDLE_SLOW_TESTS set they are built and run as well.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

import checks
from checks import check

MAIN = """#include <brindle/brindle.h>
#include <cstdio>

int main() {
  CBrindle interpreter;
  std::puts(interpreter.ExecuteProgram(u"hello.bas") ? BRINDLE_VERSION : "not run");
}
"""
PROJECTS = {
    "add_subdirectory": "add_subdirectory({source} brindle)\n",
    "FetchContent": "include(FetchContent)\n"
                    "FetchContent_Declare(brindle SOURCE_DIR {source})\n"
                    "FetchContent_MakeAvailable(brindle)\n",
}


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


def check_project(name, text, source, compiler, folder):
    (folder / "main.cpp").write_text(MAIN, encoding="utf-8")
    (folder / "hello.bas").write_text('print "hello"\n', encoding="utf-8")
    (folder / "CMakeLists.txt").write_text(
        "cmake_minimum_required(VERSION 3.25)\nproject(application LANGUAGES CXX)\n" + text.format(source=source) +
        "add_executable(application main.cpp)\ntarget_link_libraries(application PRIVATE brindle::brindle)\n",
        encoding="utf-8")
    build = folder / "build"
    configured = run(["cmake", "-G", "Ninja", "-S", str(folder), "-B", str(build), f"-DCMAKE_CXX_COMPILER={compiler}",
                      "-DCMAKE_BUILD_TYPE=Release"])
    check(f"{name}: configures", configured.returncode == 0, configured.stdout + configured.stderr)
    if configured.returncode != 0:
        return
    targets = {line.split(":")[0] for line in run(["ninja", "-C", str(build), "-t", "targets", "all"]).stdout.split("\n")}
    files = {os.path.basename(target) for target in targets}
    check(f"{name}: the library is a target", "libbrindle.so" in files, sorted(files))
    check(f"{name}: the application is a target", "application" in files, sorted(files))
    unwanted = sorted(file for file in files if "_test" in file or file in ("brindle_runner", "brindle_soak") or
                      file.startswith("brindle_example"))
    check(f"{name}: neither tests nor runner nor examples are", not unwanted, unwanted)
    if not os.environ.get("BRINDLE_SLOW_TESTS"):
        return
    built = run(["cmake", "--build", str(build)])
    check(f"{name}: builds", built.returncode == 0, built.stdout[-4000:] + built.stderr)
    if built.returncode == 0:
        ran = run([str(build / "application")], cwd=folder)
        version = (source / "include/brindle/version.h").read_text(encoding="utf-8")
        check(f"{name}: runs a script", ran.returncode == 0 and ran.stdout.startswith("hello\n") and
              f'"{ran.stdout.split()[-1]}"' in version, ran.stdout + ran.stderr)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", required=True, type=pathlib.Path)
    parser.add_argument("--compiler", default="c++")
    options = parser.parse_args()
    for name, text in PROJECTS.items():
        with tempfile.TemporaryDirectory(prefix="brindle-project-") as folder:
            check_project(name, text, options.source.resolve(), options.compiler, pathlib.Path(folder))
    return checks.status()


if __name__ == "__main__":
    sys.exit(main())
