#!/usr/bin/env python3
"""Runs the same programs in Brindle, Lua, LuaJIT, Python and Yabasic and compares their processor time.

Every round runs each program once in each language, one after the other, so a disturbance of the
machine meets all of them alike. A program whose printed result differs between the languages ends
the run with an error.
"""

import argparse
import json
import math
import pathlib
import statistics
import sys
import tempfile

import callgrind
import footprint
import measuring
import targets
from measuring import BenchError

# What the ratios are shown and kept for, in this order; a further route comes first.
OTHERS = ("lua5.4", "luajit", "python3", "yabasic")


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runner", help="the brindle program (default: build/release/brindle)")
    parser.add_argument("--runs", type=int, default=5, help="rounds; the median is shown")
    parser.add_argument("--only", help="programs, separated by commas")
    parser.add_argument("--scale", type=float, help="multiplies every program's size")
    parser.add_argument(
        "--route",
        action="append",
        default=[],
        help="a further column: Brindle by this route, as 'parser' for the executing parser",
    )
    parser.add_argument("--baseline", help="a saved result to compare with (report only)")
    parser.add_argument("--save", help="writes the result to this file")
    parser.add_argument("--markdown", action="store_true", help="prints the table for a page")
    parser.add_argument(
        "--callgrind", action="store_true", help="counts instructions instead (needs valgrind)"
    )
    parser.add_argument("--profiles", help="with --callgrind: the folder where its files stay")
    parser.add_argument("--timeout", type=float, default=300.0, help="seconds that one run may take")
    arguments = parser.parse_args()
    if arguments.runs < 1:
        parser.error("--runs must be 1 or more")
    if arguments.scale is None:
        arguments.scale = callgrind.SCALE if arguments.callgrind else 1.0
    if not (math.isfinite(arguments.scale) and arguments.scale > 0):
        parser.error("--scale must be a number above 0")
    if arguments.callgrind and (arguments.baseline or arguments.save or arguments.markdown):
        parser.error("--callgrind measures no time: nothing to compare or to save")
    if arguments.profiles and not arguments.callgrind:
        parser.error("--profiles goes with --callgrind")
    known = list(targets.PROGRAMS)
    arguments.names = list(dict.fromkeys(arguments.only.split(","))) if arguments.only else known
    for name in arguments.names:
        if name not in known:
            parser.error(f"there is no program {name!r}; there are {', '.join(known)}")
    arguments.route = list(dict.fromkeys(arguments.route))
    for route in arguments.route:
        if route == "brindle" or route in OTHERS:
            parser.error(f"{route!r} is no route")
    if arguments.runner is None:
        arguments.runner = measuring.DEFAULT_RUNNER
    elif not pathlib.Path(arguments.runner).is_file():
        # Asked for by name, so leaving it out quietly would be misleading.
        parser.error(f"there is no runner {arguments.runner!r}")
    return arguments


def measure(arguments, languages, folder):
    """Seconds of every run: times[program][language] is a list."""
    times = {name: {language.name: [] for language in languages} for name in arguments.names}
    for number in range(arguments.runs):
        for name in arguments.names:
            outputs, tables = {}, {}
            for language in languages:
                measuring.show_progress(
                    f"round {number + 1} of {arguments.runs}: {name}, {language.name}"
                )
                command = (*language.command, f"{name}.{language.extension}")
                outcome = measuring.run_measured(command, folder, arguments.timeout)
                outputs[language.name] = outcome.output
                tables[language.name] = measuring.take_table(folder)
                times[name][language.name].append(outcome.seconds)
            measuring.check_agreement(name, outputs, tables)
    measuring.show_progress("")
    return times


def summarise(times, others):
    """Medians, the ratios brindle/other, and the geometric mean of each ratio."""
    medians = {
        name: {language: statistics.median(seconds) for language, seconds in row.items()}
        for name, row in times.items()
    }
    ratios = {}
    for name, row in medians.items():
        if "brindle" in row:
            ratios[name] = {
                other: row["brindle"] / row[other] for other in others if row.get(other, 0) > 0
            }
    means = {}
    for other in others:
        values = [row[other] for row in ratios.values() if other in row]
        if values:
            means[other] = statistics.geometric_mean(values)
    return {"seconds": medians, "ratios": ratios, "geometric_means": means}


def print_table(summary, languages, markdown):
    """Seconds of each language, then the ratios; aim and gate stand behind the ratio to Lua."""
    names = [language.name for language in languages]
    others = list(summary["geometric_means"])
    header = ["program"] + [f"{name} s" for name in names]
    for other in others:
        header += [f"/{other}", "aim", "gate"] if other == "lua5.4" else [f"/{other}"]
    rows = []
    for program, seconds in summary["seconds"].items():
        row = [program] + [f"{seconds[name]:.3f}" for name in names]
        for other in others:
            value = summary["ratios"][program].get(other)
            row += ratio_cells(other, value, targets.PROGRAMS[program])
        rows.append(row)
    if others:
        row = ["geometric mean"] + [""] * len(names)
        for other in others:
            row += ratio_cells(other, summary["geometric_means"][other], targets.MEAN)
        rows.append(row)
    print_columns(header, rows, markdown)


def ratio_cells(other, value, target):
    """The cells of one ratio; only Lua's has a gate, and a mark where it is exceeded."""
    shown = "-" if value is None else f"{value:.2f}"
    if other != "lua5.4":
        return [shown]
    sign = "  " if value is None else targets.mark(value, target.gate)
    return [shown + sign, f"{target.aim:.2f}", f"{target.gate:.2f}"]


def print_columns(header, rows, markdown):
    widths = [max(len(row[column]) for row in [header, *rows]) for column in range(len(header))]
    if markdown:
        print("| " + " | ".join(header) + " |")
        print("| --- |" + " ---: |" * (len(header) - 1))
        for row in rows:
            print("| " + " | ".join(cell.strip() for cell in row) + " |")
        return
    for row in [header, *rows]:
        cells = [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
        print("  ".join([row[0].ljust(widths[0]), *cells]).rstrip())


def print_verdict(summary):
    """Which gates are exceeded, and how the means stand to their aims."""
    means = summary["geometric_means"]
    if "lua5.4" in means:
        above = [
            f"{program} {ratios['lua5.4']:.2f} ({targets.PROGRAMS[program].gate:.2f})"
            for program, ratios in summary["ratios"].items()
            if ratios.get("lua5.4", 0) > targets.PROGRAMS[program].gate
        ]
        if means["lua5.4"] > targets.MEAN.gate:
            above.append(f"the mean {means['lua5.4']:.2f} ({targets.MEAN.gate:.2f})")
        print(f"above the gate (!): {', '.join(above) if above else 'nothing'}")
    for other, aim in targets.OTHER_MEANS.items():
        if other in means:
            print(f"mean against {other}: {means[other]:.3f}, about {aim:g} is the aim")
    if means and len(summary["ratios"]) < len(targets.PROGRAMS):
        print(f"The means are those of {len(summary['ratios'])} of {len(targets.PROGRAMS)} programs.")


def print_comparison(summary, sizes, stored):
    """What changed since the stored result; it judges nothing."""
    print()
    print(f"{'against the baseline':22}{'seconds':>18}{'change':>9}{'/lua5.4':>18}{'change':>9}")
    other_sizes = []
    for program, seconds in summary["seconds"].items():
        old_seconds = stored["seconds"].get(program, {}).get("brindle")
        if old_seconds is not None and stored["sizes"].get(program) != sizes[program]:
            other_sizes.append(program)
            old_seconds = None
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
    if other_sizes:
        # Ratios too shift a little: start-up is a larger share of a smaller program.
        print(f"Of another size in the baseline, so without seconds: {', '.join(other_sizes)}")


def change(old, new, digits):
    """Old and new figure with the change in per cent, in columns of fixed width."""
    if old is None or new is None:
        return f"{'-':>18}{'-':>9}"
    pair = f"{old:.{digits}f} > {new:.{digits}f}"
    percent = f"{(new / old - 1) * 100:+.0f} %" if old > 0 else "-"
    return f"{pair:>18}{percent:>9}"


def compare_times(arguments, languages, folder):
    # Read before the long measurement, so that a wrong name is noticed at once.
    stored = None
    if arguments.baseline:
        stored = json.loads(pathlib.Path(arguments.baseline).read_text(encoding="utf-8"))

    load_before = measuring.load_average()
    sizes = measuring.prepare(arguments.names, languages, arguments.scale, folder)
    times = measure(arguments, languages, folder)

    summary = summarise(times, (*arguments.route, *OTHERS))
    print_table(summary, languages, arguments.markdown)
    print()
    print_verdict(summary)
    print(f"medians of {arguments.runs} runs, processor time (user + system); ratios are Brindle / other")
    if arguments.scale != 1:
        print(f"at {arguments.scale:g} of the usual size: start-up is a larger share than usual")
    print(f"load average {load_before:.2f} before, {measuring.load_average():.2f} after")
    if stored is not None:
        print_comparison(summary, sizes, stored)
    if arguments.save:
        result = {
            "machine": measuring.machine_description(languages),
            "runs": arguments.runs,
            "scale": arguments.scale,
            "sizes": sizes,
            **summary,
        }
        pathlib.Path(arguments.save).write_text(json.dumps(result, indent=2) + "\n", encoding="utf-8")


def main():
    arguments = parse_arguments()
    languages, missing = measuring.find_languages(arguments.runner, arguments.route)
    for sentence in missing:
        print(sentence)
    if not languages:
        raise BenchError("no language can run here")
    if len(languages) == 1:
        print(f"only {languages[0].name} runs here: its results are compared with nothing")

    with tempfile.TemporaryDirectory(prefix="brindle-bench-") as name:
        folder = pathlib.Path(name)
        if arguments.callgrind:
            callgrind.report(
                arguments.names,
                languages,
                arguments.scale,
                folder,
                arguments.profiles,
                arguments.timeout,
            )
            return 0
        compare_times(arguments, languages, folder)
    if not arguments.only:
        print()
        usual = [language for language in languages if language.name not in arguments.route]
        footprint.report(usual, footprint.RUNS)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BenchError as error:
        sys.exit(f"\nbench: {error}")
    except (OSError, ValueError, KeyError) as error:
        sys.exit(f"\nbench: {error!r}")
