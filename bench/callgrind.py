"""Instruction counts of Brindle and Lua: what a busy machine cannot disturb.

Used by run.py for its option --callgrind; needs valgrind. Counting takes about fifty times as long
as running, so the programs are run at a small size, once. What a script that only prints costs is
taken off, because start-up is a large share of so small a program.
"""

import pathlib
import re
import shutil
import statistics

import measuring
from measuring import BenchError

SCALE = 0.02
TRIVIAL = {"bas": 'print "ready"\n', "lua": 'print("ready")\n'}
TOTAL_LINE = re.compile(r"^(?:totals|summary): (\d+)", re.MULTILINE)


def count(valgrind, language, script, folder, profile, timeout):
    """How many instructions a script took, and what it printed."""
    command = (valgrind, "--tool=callgrind", f"--callgrind-out-file={profile}")
    outcome = measuring.run_measured(
        (*command, *language.command, script), folder, timeout
    )
    found = TOTAL_LINE.search(profile.read_text(encoding="utf-8", errors="replace"))
    if found is None:
        raise BenchError(f"{profile.name}: valgrind wrote no total")
    return int(found[1]), outcome.output


def report(names, languages, scale, folder, profiles, timeout):
    """Prints a table of counts. The profiles stay in the folder "profiles" when one is given."""
    valgrind = shutil.which("valgrind")
    if valgrind is None:
        raise BenchError("--callgrind needs valgrind, which is not installed")
    counted = [language for language in languages if language.extension in TRIVIAL]
    counted = [language for language in counted if language.name != "luajit"]
    profiles = pathlib.Path(profiles).resolve() if profiles else folder
    profiles.mkdir(parents=True, exist_ok=True)

    start = {}
    for language in counted:
        script = f"trivial.{language.extension}"
        (folder / script).write_text(TRIVIAL[language.extension], encoding="ascii")
        profile = profiles / f"callgrind.start.{language.name}"
        start[language.name], _ = count(valgrind, language, script, folder, profile, timeout)

    sizes = measuring.prepare(names, counted, scale, folder)
    rows = {}
    for name in names:
        outputs, tables, row = {}, {}, {}
        for language in counted:
            measuring.show_progress(f"counting: {name}, {language.name}")
            script = f"{name}.{language.extension}"
            profile = profiles / f"callgrind.{name}.{language.name}"
            total, outputs[language.name] = count(
                valgrind, language, script, folder, profile, timeout
            )
            tables[language.name] = measuring.take_table(folder)
            row[language.name] = total - start[language.name]
        measuring.check_agreement(name, outputs, tables)
        rows[name] = row
    measuring.show_progress("")
    print_counts(rows, sizes, counted, start)


def print_counts(rows, sizes, counted, start):
    columns = [language.name for language in counted]
    compared = "brindle" in columns and "lua5.4" in columns
    print(
        f"{'millions of instructions':26}{'size':>10}"
        + "".join(f"{name:>12}" for name in columns)
        + (f"{'/lua5.4':>10}" if compared else "")
    )
    ratios = []
    for name, row in rows.items():
        line = f"{name:26}{sizes[name]:10}" + "".join(f"{row[each] / 1e6:12.2f}" for each in columns)
        if compared and row["lua5.4"] > 0 and row["brindle"] > 0:
            ratios.append(row["brindle"] / row["lua5.4"])
            line += f"{ratios[-1]:10.2f}"
        print(line)
    if ratios:
        print(f"{'geometric mean':36}{'':{12 * len(columns)}}{statistics.geometric_mean(ratios):10.2f}")
    print(f"{'start-up, taken off above':36}" + "".join(f"{start[each] / 1e6:12.2f}" for each in columns))
