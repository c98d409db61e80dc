#!/usr/bin/env python3
"""Installs the library into an empty prefix and uses it as a stranger would.

Usage: check_package.py --build BUILD_DIR --source SOURCE_DIR --compiler CXX [--flags FLAGS]

Checks that every public header compiles alone under strict warnings, that the shared library exports the public
classes and nothing of the inner rooms, and that examples/host builds against the installed files through
pkg-config and through find_package, and runs. The server library of docs/components.md is built, registered and used.
"""

import argparse
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

import checks
from checks import check

STRICT = ["-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Werror"]
PUBLIC_CLASSES = ("CBrindle", "CBasicVariable", "CVarBase", "CString", "CBlowFish", "CUserInterface",
                  "CConsoleUserInterface", "CDialogEvents", "CDialogWindow", "CDbf", "CDbfFieldDescriptorEx",
                  "CAttributePair", "CEnvironment", "CWindowUserInterface",
                  "CAutomationClasses", "CScriptCheck", "CStopRequest")
FREE_FUNCTIONS = ("SysAllocString", "SysAllocStringLen", "SysStringLen", "SysFreeString", "VariantInit",
                  "VariantClear", "VariantCopy", "SafeArrayCreate", "SafeArrayCreateVector", "SafeArrayDestroy",
                  "SafeArrayCopy", "SafeArrayGetDim", "SafeArrayGetElemsize", "SafeArrayGetVartype",
                  "SafeArrayGetLBound", "SafeArrayGetUBound", "SafeArrayAccessData", "SafeArrayUnaccessData",
                  "SafeArrayGetElement", "SafeArrayPutElement")


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


def check_headers(prefix, compiler, flags):
    headers = sorted((prefix / "include" / "brindle").glob("*.h"))
    check("headers are installed", len(headers) > 5, str(headers))
    for header in headers:
        source = f"#include <brindle/{header.name}>\n"
        result = run([compiler, *STRICT, *flags, "-fsyntax-only", "-x", "c++", f"-I{prefix / 'include'}", "-"],
                     input=source)
        check(f"{header.name} compiles alone", result.returncode == 0, result.stderr)


def check_exports(library):
    symbols = run(["nm", "-D", "-C", "--defined-only", str(library)]).stdout.splitlines()
    names = [line.split(" ", 2)[2] for line in symbols if line.split(" ", 2)[1] in "TBDR"]
    check("the library exports something", len(names) > 50, str(names[:10]))
    for name in FREE_FUNCTIONS:
        check(f"{name} is exported", name in names)
    inner = []
    for name in names:
        plain = name.removeprefix("typeinfo for ").removeprefix("typeinfo name for ").removeprefix("vtable for ")
        public = plain.startswith(tuple(c + "::" for c in PUBLIC_CLASSES)) or plain in PUBLIC_CLASSES
        # A sanitizer marks each variable with a name of its own.
        if not public and plain not in FREE_FUNCTIONS and not plain.startswith(("brindle::detail::FreeBlock", "__odr_")):
            inner.append(name)
    check("nothing else is exported", not inner, "\n".join(inner[:20]))


def check_window_system(prefix, library):
    """The plug-in, where the build has one: what it exports, and that the installed runner finds it."""
    plug_in = library.parent / "libbrindle-qt.so"
    if not plug_in.exists():
        return
    symbols = run(["nm", "-D", "-C", "--defined-only", str(plug_in)]).stdout.splitlines()
    names = [line.split(" ", 2)[2] for line in symbols if line.split(" ", 2)[1] in "TBDR"]
    own = [name for name in names if not name.startswith("_")]  # without the linker's marks
    other = [name for name in own if "CQtUserInterface" not in name and name != "BrindleCreateWindowSystem"]
    check("the plug-in exports its class and its entry, nothing else", names and not other, "\n".join(other[:20]))
    script = prefix / "nothing.bas"
    script.write_text("x = 1\n")
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_RUNTIME_DIR=str(prefix))
    ran = run([str(prefix / "bin" / "brindle"), "--ui=window", str(script)], env=environment)
    check("the installed runner shows windows", ran.returncode == 0, ran.stderr)


def check_host(name, command, program, script, environment, cwd):
    built = run(command, cwd=cwd, env=environment, shell=isinstance(command, str))
    check(f"{name}: builds", built.returncode == 0, built.stdout + built.stderr)
    if built.returncode != 0:
        return
    ran = run([str(program), str(script)], env=environment)
    check(f"{name}: runs", ran.returncode == 0 and ran.stdout == "Battery at 80 %\n", ran.stdout + ran.stderr)


def check_components(prefix, source, build_component, environment, work):
    """The class that ships is found by the installed files alone; the guide's library is built and used."""
    runner = str(prefix / "bin" / "brindle")
    environment = dict(environment, XDG_DATA_HOME=str(work / "data"), XDG_DATA_DIRS="/nowhere")
    script = work / "files.bas"
    script.write_text('fs = createobject("Brindle.FileSystem")\nprint fs.exists("files.bas")\n', encoding="utf-8")
    result = run([runner, "files.bas"], env=environment, cwd=work)
    check("Brindle.FileSystem comes registered", (result.stdout, result.stderr) == ("True\n", ""), result.stderr)

    if list(prefix.glob("lib*/**/libbrindle-dbus.so")):
        (work / "bus.bas").write_text('o = createobject("dbus:")\n', encoding="utf-8")
        result = run([runner, "bus.bas"], env=environment, cwd=work)
        check("the plug-in for D-Bus is found", result.stderr == 'D-Bus: "dbus:" names no service\n', result.stderr)

    guide = (source / "docs" / "components.md").read_text(encoding="utf-8")
    blocks = dict(re.findall(r"^```(cpp|basic)\b[^\n]*\n(.*?)^```$", guide, re.MULTILINE | re.DOTALL))
    (work / "counter.cpp").write_text(blocks["cpp"], encoding="utf-8")
    (work / "counter.bas").write_text(blocks["basic"], encoding="utf-8")
    built = run(build_component, cwd=work, env=environment, shell=True)
    check("the guide's library builds", built.returncode == 0, built.stdout + built.stderr)
    result = run([runner, "register", "counter.so"], env=environment, cwd=work)
    check("it is registered", (result.returncode, result.stdout, result.stderr) == (0, "", ""), result.stderr)
    result = run([runner, "counter.bas"], env=environment, cwd=work)
    check("the guide's script uses it", (result.stdout, result.stderr) ==
          ("8 7\n", "The counter goes up to 1000\n"), result.stdout + result.stderr)
    result = run([runner, "unregister", "counter.so"], env=environment, cwd=work)
    check("it is unregistered", (result.returncode, result.stdout, result.stderr) == (0, "", ""), result.stderr)
    result = run([runner, "counter.bas"], env=environment, cwd=work)
    check("and not found any more", "Invalid class string (Example.Counter)" in result.stderr, result.stderr)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--source", required=True, type=pathlib.Path)
    parser.add_argument("--compiler", default="c++")
    parser.add_argument("--flags", default="")
    options = parser.parse_args()
    options.build = options.build.resolve()
    options.source = options.source.resolve()
    flags = shlex.split(options.flags)

    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder)
        prefix = work / "prefix"
        installed = run(["cmake", "--install", str(options.build), "--prefix", str(prefix)])
        check("cmake --install succeeds", installed.returncode == 0, installed.stderr)
        library = next(iter(prefix.glob("lib*/**/libbrindle.so")), None)
        check("the library is installed", library is not None)
        if library is None:
            return 1
        check("the library carries its version", len(os.path.basename(os.path.realpath(library)).split(".")) == 5,
              os.path.realpath(library))
        check("the runner is installed", os.access(prefix / "bin" / "brindle", os.X_OK))
        check("the manual pages are installed", len(list(prefix.glob("share/man/man1/brindle*.1*"))) == 5)
        for name in ("bash-completion/completions/brindle", "zsh/site-functions/_brindle",
                     "fish/vendor_completions.d/brindle.fish"):
            check(f"{name} is installed", (prefix / "share" / name).is_file())

        check_headers(prefix, options.compiler, flags)
        check_exports(library)
        check_window_system(prefix, library)

        environment = dict(os.environ, LD_LIBRARY_PATH=str(library.parent),
                           PKG_CONFIG_PATH=str(library.parent / "pkgconfig"))
        host = options.source / "examples" / "host"
        script = host / "battery.bas"
        # The package file finds the prefix from where it stands, not where it was configured.
        package = "$(pkg-config --cflags --libs brindle)"
        check_host("pkg-config",
                   f"{options.compiler} -std=c++20 {options.flags} {shlex.quote(str(host / 'main.cpp'))} "
                   f"-o host {package}",
                   work / "host", script, environment, work)
        check_components(prefix, options.source,
                         f"{options.compiler} -std=c++20 -Wall -Wextra -Wpedantic -Werror {options.flags} -shared "
                         f"-fPIC counter.cpp -o counter.so {package}", environment, work)
        build = work / "build"
        check_host("find_package",
                   f"cmake -S {shlex.quote(str(host))} -B build -DCMAKE_PREFIX_PATH={shlex.quote(str(prefix))} "
                   f"-DCMAKE_CXX_COMPILER={options.compiler} '-DCMAKE_CXX_FLAGS={options.flags}' "
                   "&& cmake --build build",
                   build / "brindle_example_host", script, environment, work)

    return checks.status()


if __name__ == "__main__":
    sys.exit(main())
