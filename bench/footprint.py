#!/usr/bin/env python3
"""Start-up time and resident size of a trivial script, and the memory of a numeric array.

The resident size comes from the system's "time" program: a process started by Python directly
inherits Python's own peak, which is larger than what is measured here. run.py prints the same
behind its table.
"""

import argparse
import pathlib
import shutil
import statistics
import sys
import tempfile

import measuring
import targets
from measuring import BenchError

TRIVIAL = {
    "bas": 'print "ready"\n',
    "lua": 'print("ready")\n',
    "py": 'print("ready")\n',
    "yab": 'print "ready"\n',
}

RUNS = 50

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


def report(languages, runs):
    """Prints the table of the trivial script and the memory of an array item."""
    load_before = measuring.load_average()
    with tempfile.TemporaryDirectory(prefix="brindle-bench-") as name:
        folder = pathlib.Path(name)
        for extension, text in TRIVIAL.items():
            (folder / f"trivial.{extension}").write_text(text, encoding="ascii")
        elapsed, processor = run_trivial(languages, folder, runs)

        print(f"{'trivial script':16}{'elapsed ms':>14}{'processor ms':>16}{'resident MiB':>16}")
        for language in languages:
            command = (*language.command, f"trivial.{language.extension}")
            peak = peak_kilobytes(command, folder, runs, 60)
            limits = language.name == "brindle"
            cells = (
                figure(statistics.median(elapsed[language.name]) * 1000),
                figure(
                    statistics.median(processor[language.name]) * 1000,
                    targets.START_MILLISECONDS if limits else None,
                ),
                "no 'time'  " if peak is None
                else figure(peak / 1024, targets.RESIDENT_MEBIBYTES if limits else None),
            )
            print(f"{language.name:16}{cells[0]:>14}{cells[1]:>16}{cells[2]:>16}".rstrip())
        print(
            f"not above (!): {targets.START_MILLISECONDS:g} ms of processor time,"
            f" {targets.RESIDENT_MEBIBYTES:g} MiB"
        )

        for language in languages:
            if language.name == "brindle":
                report_array(language, folder, min(runs, 10))
    print(f"\nmedians of {runs} runs")
    print(f"load average {load_before:.2f} before, {measuring.load_average():.2f} after")


def run_trivial(languages, folder, runs):
    """Elapsed and processor seconds of every run, by language."""
    elapsed = {language.name: [] for language in languages}
    processor = {language.name: [] for language in languages}
    for _ in range(runs):
        for language in languages:
            command = (*language.command, f"trivial.{language.extension}")
            outcome = measuring.run_measured(command, folder, 60)
            if outcome.output.strip() != "ready":
                raise BenchError(f"{language.name} printed {outcome.output!r}")
            elapsed[language.name].append(outcome.elapsed)
            processor[language.name].append(outcome.seconds)
    return elapsed, processor


def figure(value, gate=None):
    """A figure with two digits and the mark of an exceeded gate."""
    return f"{value:.2f}" + ("  " if gate is None else targets.mark(value, gate))


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
    sign = targets.mark(item, targets.ARRAY_ITEM_BYTES).rstrip()
    print(
        f"\n{item:.1f}{sign} bytes of peak memory for each item of a numeric array"
        f" (not above: {targets.ARRAY_ITEM_BYTES:g})"
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", help="the brindle program (default: build/release/brindle)")
    parser.add_argument("--runs", type=int, default=RUNS, help="runs; the median is shown")
    arguments = parser.parse_args()
    if arguments.runs < 1:
        parser.error("--runs must be 1 or more")
    languages, missing = measuring.find_languages(arguments.runner or measuring.DEFAULT_RUNNER)
    for sentence in missing:
        print(sentence)
    report(languages, arguments.runs)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BenchError as error:
        sys.exit(f"bench: {error}")
    except OSError as error:
        sys.exit(f"bench: {error!r}")
