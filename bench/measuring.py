"""What the benchmark tools share: languages, sized programs, measured child processes.

Used by run.py, callgrind.py and footprint.py; standard library only.
Time is the processor time that the system charges to the child alone (user + system, from wait4),
so a busy machine disturbs it far less than it disturbs elapsed time.
"""

import os
import pathlib
import platform
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from dataclasses import dataclass

BENCH = pathlib.Path(__file__).resolve().parent
ROOT = BENCH.parent
PROGRAMS = BENCH / "programs"
DEFAULT_RUNNER = ROOT / "build" / "release" / "brindle"

# The one line of a program that says how much it does, in each language's comment.
SIZE_LINE = re.compile(r"^((?:local )?n = )(\d+)(\s+(?:#|--|//) size)$", re.MULTILINE)


@dataclass(frozen=True)
class Language:
    name: str
    extension: str
    command: tuple
    version: str


@dataclass(frozen=True)
class Outcome:
    output: str
    seconds: float
    elapsed: float


class BenchError(Exception):
    """A program that fails or prints something else than the others: never a mere warning."""


def find_languages(runner, routes=()):
    """The languages that can run here, and a sentence for each that cannot.

    Every route beyond the usual one is a language of its own, with the same programs.
    """
    languages, missing = [], []

    runner_path = pathlib.Path(runner)
    if runner_path.is_file() and os.access(runner_path, os.X_OK):
        command = (str(runner_path.resolve()), "--ui=console", "--on-error=abort")
        languages.append(Language("brindle", "bas", command, "as built"))
        for route in routes:
            languages.append(Language(route, "bas", (*command, f"--route={route}"), "as built"))
    else:
        missing.append(f"brindle is skipped: there is no runner at {runner}")

    others = (
        ("lua5.4", "lua", "lua5.4", (), "-v"),
        # Its interpreter alone: compiling to machine code is another kind of system.
        ("luajit", "lua", "luajit", ("-joff",), "-v"),
        # Without wrapper and site packages: what a machine has installed is not the language.
        ("python3", "py", sys.executable or "python3", ("-I", "-S"), "--version"),
        ("yabasic", "yab", "yabasic", (), "--version"),
    )
    for name, extension, program, options, version_option in others:
        path = shutil.which(program)
        if path is None:
            missing.append(f"{name} is skipped: it is not installed")
            continue
        path = os.path.realpath(path)
        version = first_line([path, version_option])
        languages.append(Language(name, extension, (path, *options), version))
    return languages, missing


def first_line(command):
    """The first line that a command says about itself, or "unknown"."""
    try:
        result = subprocess.run(command, capture_output=True, text=True, timeout=30, check=False)
    except (OSError, subprocess.TimeoutExpired):
        return "unknown"
    text = (result.stdout or result.stderr).strip()
    return text.splitlines()[0] if text else "unknown"


def prepare(names, languages, scale, folder):
    """Writes the sized programs and their input; returns the size of each program."""
    sizes = {}
    for name in names:
        for extension in dict.fromkeys(language.extension for language in languages):
            source = PROGRAMS / f"{name}.{extension}"
            text, size = sized_text(source, scale)
            if sizes.setdefault(name, size) != size:
                raise BenchError(f"{source.name}: its size differs from the other languages'")
            (folder / source.name).write_text(text, encoding="ascii")
    if "lines" in sizes:
        write_lines_file(folder / "lines.txt", sizes["lines"])
    return sizes


def sized_text(path, scale):
    """A program's text with its size multiplied, and that size (never below 1)."""
    text = path.read_text(encoding="ascii")
    found = SIZE_LINE.findall(text)
    if len(found) != 1:
        raise BenchError(f"{path.name}: one line must be marked as the size, not {len(found)}")
    size = max(1, round(int(found[0][1]) * scale))
    return SIZE_LINE.sub(lambda match: f"{match[1]}{size}{match[3]}", text), size


def write_lines_file(path, count):
    """The input of the program "lines": the same bytes on every machine."""
    names = ("pump", "valve", "filter", "hose", "clamp", "gauge", "sensor")
    with open(path, "w", encoding="ascii", newline="\n") as file:
        for i in range(count):
            quantity = i * 7919 % 100000
            price = i * 31 % 4000 / 4
            file.write(f"{names[i % len(names)]};{quantity};{price:.2f}\n")


def take_table(folder):
    """The table that a program wrote, removed so that the next one starts from nothing.

    None when there is none. Without the day on which it was written: midnight is no difference.
    """
    path = folder / "records.dbf"
    if not path.exists():
        return None
    data = path.read_bytes()
    path.unlink()
    return data[:1] + data[4:]


def check_agreement(name, outputs, tables):
    """Every language must have printed the same text, and some text at all, and written the same."""
    texts = set(outputs.values())
    if len(texts) != 1 or not next(iter(texts)).strip():
        shown = "\n".join(f"  {language}: {text!r}" for language, text in outputs.items())
        raise BenchError(f"{name}: the printed results differ or are empty\n{shown}")
    if len(set(tables.values())) != 1:
        raise BenchError(f"{name}: the tables written by {', '.join(tables)} are not all the same")


def show_progress(line):
    if sys.stderr.isatty():
        sys.stderr.write(f"\r\033[K{line}")
        sys.stderr.flush()


def run_measured(command, folder, timeout):
    """Runs one child to its end and returns what it printed and what it cost."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        started = time.perf_counter()
        child = subprocess.Popen(
            command, cwd=folder, stdin=subprocess.DEVNULL, stdout=out, stderr=err
        )
        timer = threading.Timer(timeout, child.kill)
        timer.start()
        try:
            _, status, usage = os.wait4(child.pid, 0)
        except BaseException:
            child.kill()
            child.wait()
            raise
        finally:
            timer.cancel()
        elapsed = time.perf_counter() - started
        # The child is reaped already; Popen must not wait for that number again.
        child.returncode = os.waitstatus_to_exitcode(status)

        out.seek(0)
        err.seek(0)
        output = out.read().decode("utf-8", "replace")
        complaint = err.read().decode("utf-8", "replace").strip()
    if child.returncode != 0:
        end = f"exit status {child.returncode}"
        if child.returncode == -signal.SIGKILL:
            end = f"killed (by this tool when it ran for {timeout:g} s)"
        raise BenchError(f"{' '.join(command)}: {end}\n{output}{complaint}")
    return Outcome(output, usage.ru_utime + usage.ru_stime, elapsed)


def machine_description(languages):
    """What a reader needs to judge the figures."""
    model = "unknown"
    try:
        for line in pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
            if line.startswith("model name"):
                model = line.split(":", 1)[1].strip()
                break
    except OSError:
        pass
    return {
        "processor": model,
        "cores": os.cpu_count(),
        "system": f"{platform.system()} {platform.release()} {platform.machine()}",
        "compiler": build_compiler(),
        "languages": {language.name: language.version for language in languages},
    }


def build_compiler():
    """The compiler and build type of the release build, as its cache records them."""
    cache = ROOT / "build" / "release" / "CMakeCache.txt"
    try:
        entries = dict(
            re.findall(r"^(CMAKE_\w+):\w+=(.*)$", cache.read_text(encoding="utf-8"), re.MULTILINE)
        )
    except OSError:
        return "unknown"
    compiler = entries.get("CMAKE_CXX_COMPILER", "c++")
    return f"{first_line([compiler, '--version'])}, {entries.get('CMAKE_BUILD_TYPE', 'unknown')} build"


def load_average():
    try:
        return os.getloadavg()[0]
    except OSError:
        return float("nan")
