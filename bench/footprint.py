#!/usr/bin/env python3
"""Start-up time and resident size of a trivial script, and the memory of a numeric array.

The resident size comes from the system's "time" program: a process started by Python directly
inherits Python's own peak, which is larger than what is measured here.
"""

import argparse
import pathlib
import shutil
import statistics
import sys
import tempfile

import measuring
from measuring import BenchError

TRIVIAL = {
    "bas": 'print "ready"\n',
    "lua": 'print("ready")\n',
    "py": 'print("ready")\n',
    "yab": 'print "ready"\n',
}

# Ten arrays, because one of them is small beside the pages in which memory is counted.
ARRAY_COUNT = 10
ARRAY_ITEMS = 16000


def array_script(filled):
    """Fills ten arrays with fractions, or runs the same loops without any array."""
    lines = []
    for number in range(ARRAY_COUNT):
        name = f"a{number}"
        target = name
        if filled:
            lines.append(f"dim {name}[{ARRAY_ITEMS}]")
            target = f"{name}[i]"
        lines += [f"for i = 0 to {ARRAY_ITEMS - 1}", f"  {target} = i + 0.5", "next"]
    lines.append('print "ready"')
    return "\n".join(lines) + "\n"


def peak_kilobytes(command, folder, runs, timeout):
    """The median peak resident size, in KiB."""
    time_program = shutil.which("time")
    if time_program is None:
        return None
    sizes = []
    report = folder / "peak"
    for _ in range(runs):
        wrapped = [time_program, "-f", "%M", "-o", str(report), *command]
        measuring.run_measured(wrapped, folder, timeout)
        sizes.append(int(report.read_text(encoding="ascii").split()[-1]))
    return statistics.median(sizes)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", help="the brindle program (default: build/release/brindle)")
    parser.add_argument("--runs", type=int, default=50, help="runs; the median is shown")
    arguments = parser.parse_args()
    if arguments.runs < 1:
        parser.error("--runs must be 1 or more")
    languages, missing = measuring.find_languages(arguments.runner or measuring.DEFAULT_RUNNER)
    for sentence in missing:
        print(sentence)

    load_before = measuring.load_average()
    with tempfile.TemporaryDirectory(prefix="brindle-bench-") as name:
        folder = pathlib.Path(name)
        for extension, text in TRIVIAL.items():
            (folder / f"trivial.{extension}").write_text(text, encoding="ascii")
        elapsed = {language.name: [] for language in languages}
        processor = {language.name: [] for language in languages}
        for _ in range(arguments.runs):
            for language in languages:
                command = (*language.command, f"trivial.{language.extension}")
                outcome = measuring.run_measured(command, folder, 60)
                if outcome.output.strip() != "ready":
                    raise BenchError(f"{language.name} printed {outcome.output!r}")
                elapsed[language.name].append(outcome.elapsed)
                processor[language.name].append(outcome.seconds)

        print(f"{'trivial script':16}{'elapsed ms':>12}{'processor ms':>14}{'resident MiB':>14}")
        for language in languages:
            command = (*language.command, f"trivial.{language.extension}")
            peak = peak_kilobytes(command, folder, arguments.runs, 60)
            resident = "no 'time'" if peak is None else f"{peak / 1024:.2f}"
            print(
                f"{language.name:16}{statistics.median(elapsed[language.name]) * 1000:12.2f}"
                f"{statistics.median(processor[language.name]) * 1000:14.2f}{resident:>14}"
            )

        for language in languages:
            if language.name == "brindle":
                report_array(language, folder, min(arguments.runs, 10))
    print(f"\nmedians of {arguments.runs} runs")
    print(f"load average {load_before:.2f} before, {measuring.load_average():.2f} after")
    return 0


def report_array(language, folder, runs):
    """Peak memory with the arrays less peak memory without them, for each item."""
    peaks = {}
    for filled in (False, True):
        name = f"arrays{int(filled)}.bas"
        (folder / name).write_text(array_script(filled), encoding="ascii")
        peaks[filled] = peak_kilobytes((*language.command, name), folder, runs, 60)
    if None in peaks.values():
        print("\narray memory is skipped: the program 'time' is not installed")
        return
    item = (peaks[True] - peaks[False]) * 1024 / (ARRAY_COUNT * ARRAY_ITEMS)
    print(f"\n{item:.1f} bytes of peak memory for each item of a numeric array")


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BenchError as error:
        sys.exit(f"bench: {error}")
    except OSError as error:
        sys.exit(f"bench: {error!r}")
