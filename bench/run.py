#!/usr/bin/env python3
"""Runs the same programs in Brindle, Lua, Python and Yabasic and compares their processor time.

Every round runs each program once in each language, so a disturbance of the machine meets all of
them alike. A program whose printed result differs between the languages ends the run with an error.
"""

import argparse
import json
import math
import pathlib
import statistics
import sys
import tempfile

import measuring
from measuring import BenchError

OTHERS = ("lua5.4", "python3", "yabasic")


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", help="the brindle program (default: build/release/brindle)")
    parser.add_argument("--runs", type=int, default=5, help="rounds; the median is shown")
    parser.add_argument("--only", help="programs, separated by commas")
    parser.add_argument("--scale", type=float, default=1.0, help="multiplies every program's size")
    parser.add_argument("--baseline", help="a saved result to compare with (report only)")
    parser.add_argument("--save", help="writes the result to this file")
    parser.add_argument("--timeout", type=float, default=300.0, help="seconds that one run may take")
    arguments = parser.parse_args()
    if arguments.runs < 1:
        parser.error("--runs must be 1 or more")
    if not (math.isfinite(arguments.scale) and arguments.scale > 0):
        parser.error("--scale must be a number above 0")
    known = measuring.program_names()
    arguments.names = arguments.only.split(",") if arguments.only else known
    for name in arguments.names:
        if name not in known:
            parser.error(f"there is no program {name!r}; there are {', '.join(known)}")
    if arguments.runner is None:
        arguments.runner = measuring.DEFAULT_RUNNER
    elif not pathlib.Path(arguments.runner).is_file():
        # Asked for by name, so leaving it out quietly would be misleading.
        parser.error(f"there is no runner {arguments.runner!r}")
    return arguments


def prepare(names, languages, scale, folder):
    """Writes the sized programs and their input; returns the size of each program."""
    sizes = {}
    for name in names:
        for language in languages:
            source = measuring.PROGRAMS / f"{name}.{language.extension}"
            text, size = measuring.sized_text(source, scale)
            if sizes.setdefault(name, size) != size:
                raise BenchError(f"{source.name}: its size differs from the other languages'")
            (folder / source.name).write_text(text, encoding="ascii")
    if "lines" in sizes:
        measuring.write_lines_file(folder / "lines.txt", sizes["lines"])
    return sizes


def check_agreement(name, outputs):
    """Every language must have printed the same text, and some text at all."""
    texts = set(outputs.values())
    if len(texts) != 1 or not next(iter(texts)).strip():
        shown = "\n".join(f"  {language}: {text!r}" for language, text in outputs.items())
        raise BenchError(f"{name}: the printed results differ or are empty\n{shown}")


def measure(arguments, languages, folder):
    """Seconds of every run: times[program][language] is a list."""
    times = {name: {language.name: [] for language in languages} for name in arguments.names}
    for number in range(arguments.runs):
        for name in arguments.names:
            outputs = {}
            for language in languages:
                show_progress(f"round {number + 1} of {arguments.runs}: {name}, {language.name}")
                command = (*language.command, f"{name}.{language.extension}")
                outcome = measuring.run_measured(command, folder, arguments.timeout)
                outputs[language.name] = outcome.output
                times[name][language.name].append(outcome.seconds)
            check_agreement(name, outputs)
    show_progress("")
    return times


def show_progress(line):
    if sys.stderr.isatty():
        sys.stderr.write(f"\r\033[K{line}")
        sys.stderr.flush()


def summarise(times):
    """Medians, the ratios brindle/other, and the geometric mean of each ratio."""
    medians = {
        name: {language: statistics.median(seconds) for language, seconds in row.items()}
        for name, row in times.items()
    }
    ratios = {}
    for name, row in medians.items():
        if "brindle" in row:
            ratios[name] = {other: row["brindle"] / row[other] for other in OTHERS if other in row}
    means = {}
    for other in OTHERS:
        values = [row[other] for row in ratios.values() if other in row]
        if values:
            means[other] = statistics.geometric_mean(values)
    return {"seconds": medians, "ratios": ratios, "geometric_means": means}


def print_table(summary, languages):
    names = [language.name for language in languages]
    others = list(summary["geometric_means"])
    header = ["program"] + [f"{name} s" for name in names] + [f"/{other}" for other in others]
    rows = []
    for program, seconds in summary["seconds"].items():
        row = [program] + [f"{seconds[name]:.3f}" for name in names]
        rows.append(row + [f"{summary['ratios'][program][other]:.2f}" for other in others])
    if others:
        means = [f"{summary['geometric_means'][other]:.2f}" for other in others]
        rows.append(["geometric mean"] + [""] * len(names) + means)
    widths = [max(len(row[column]) for row in [header, *rows]) for column in range(len(header))]
    for row in [header, *rows]:
        cells = [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
        print("  ".join([row[0].ljust(widths[0]), *cells]).rstrip())


def print_comparison(summary, stored, scale):
    """What changed since the stored result; it judges nothing."""
    print()
    if stored.get("scale") != scale:
        # Ratios too shift a little: start-up is a larger share of a smaller program.
        print(f"The baseline was made at scale {stored.get('scale')}: seconds do not compare.")
    print(f"{'against the baseline':22}{'seconds':>18}{'change':>9}{'/lua5.4':>18}{'change':>9}")
    for program, seconds in summary["seconds"].items():
        old_seconds = stored["seconds"].get(program, {}).get("brindle")
        old_ratio = stored["ratios"].get(program, {}).get("lua5.4")
        new_ratio = summary["ratios"].get(program, {}).get("lua5.4")
        left = change(old_seconds, seconds.get("brindle"), 3)
        right = change(old_ratio, new_ratio, 2)
        print(f"{program:22}{left}{right}")
    # The means of the same programs on both sides, also when only some were run.
    pairs = [
        (stored["ratios"][program]["lua5.4"], ratios["lua5.4"])
        for program, ratios in summary["ratios"].items()
        if "lua5.4" in ratios and "lua5.4" in stored["ratios"].get(program, {})
    ]
    if pairs:
        old, new = (statistics.geometric_mean(side) for side in zip(*pairs))
        print(f"{'geometric mean':22}{'':27}{change(old, new, 2)}")


def change(old, new, digits):
    """Old and new figure with the change in per cent, in columns of fixed width."""
    if old is None or new is None:
        return f"{'-':>18}{'-':>9}"
    pair = f"{old:.{digits}f} > {new:.{digits}f}"
    percent = f"{(new / old - 1) * 100:+.0f} %" if old > 0 else "-"
    return f"{pair:>18}{percent:>9}"


def main():
    arguments = parse_arguments()
    languages, missing = measuring.find_languages(arguments.runner)
    for sentence in missing:
        print(sentence)
    if not languages:
        raise BenchError("no language can run here")
    if len(languages) == 1:
        print(f"only {languages[0].name} runs here: its results are compared with nothing")
    # Read before the long measurement, so that a wrong name is noticed at once.
    stored = None
    if arguments.baseline:
        stored = json.loads(pathlib.Path(arguments.baseline).read_text(encoding="utf-8"))

    load_before = measuring.load_average()
    with tempfile.TemporaryDirectory(prefix="brindle-bench-") as name:
        folder = pathlib.Path(name)
        sizes = prepare(arguments.names, languages, arguments.scale, folder)
        times = measure(arguments, languages, folder)

    summary = summarise(times)
    print_table(summary, languages)
    print(f"\nmedians of {arguments.runs} runs, processor time (user + system)")
    print(f"load average {load_before:.2f} before, {measuring.load_average():.2f} after")
    if stored is not None:
        print_comparison(summary, stored, arguments.scale)
    if arguments.save:
        result = {
            "machine": measuring.machine_description(languages),
            "runs": arguments.runs,
            "scale": arguments.scale,
            "sizes": sizes,
            **summary,
        }
        pathlib.Path(arguments.save).write_text(json.dumps(result, indent=2) + "\n", encoding="utf-8")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BenchError as error:
        sys.exit(f"\nbench: {error}")
    except (OSError, ValueError, KeyError) as error:
        sys.exit(f"\nbench: {error!r}")
