#!/usr/bin/env python3
"""Runs the example scripts and checks what they print and write.

    run_examples.py --runner PATH [--windows PATH] EXAMPLES_DIR

Every example runs in a fresh folder that holds a copy of its own, and its printed text and report files are compared
with the stored NAME.expected files. The stored files alone would only show that nothing has changed, so the figures
are also worked out here a second time, from the same input and without the interpreter.

The examples with forms are driven by the commands of their .input files, on the console and, with --windows, in windows
by a program that turns the same commands into clicks and keys.

With BRINDLE_TEST_DATA set, the GPS example also reads every file of its nmea folder: logs of real receivers, and the
example of tables those of its dbf folder.
The last line is "N passed, N failed", with ", N skipped" when something was skipped.
"""
import argparse
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

from table_reading import Tally, differences, read_table

TIMEOUT_SECONDS = 60
EARTH_RADIUS = 6371008.8

# folder, script, report files that the script writes
EXAMPLES = [
    ("gps_track", "track.bas", ["track_report.txt"]),
    ("angles", "traverse.bas", ["traverse_points.csv"]),
    ("stock_count", "count.bas", ["stock_report.txt"]),
    ("gis_tables", "tables.bas", []),
]


class Run:
    """One run of a script: its printed text, and the problems that every run must be free of."""

    def __init__(self, runner, script, folder):
        command = [str(runner), "--ui=console", "--on-error=abort", script]
        self.problems, self.printed = [], ""
        try:
            done = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True,
                                  timeout=TIMEOUT_SECONDS, check=False)
        except subprocess.TimeoutExpired:
            self.problems.append(f"still running after {TIMEOUT_SECONDS} s")
            return
        self.printed = done.stdout.decode("utf-8", "replace")
        if done.returncode != 0:
            self.problems.append(f"exit status {done.returncode}")
        if done.stderr:
            self.problems.append("on stderr: " + done.stderr.decode("utf-8", "replace").strip())


def first_difference(expected, actual):
    expected_lines, actual_lines = expected.splitlines(), actual.splitlines()
    for number, (wanted, found) in enumerate(zip(expected_lines, actual_lines), 1):
        if wanted != found:
            return f"line {number}: expected {wanted!r}, found {found!r}"
    return f"expected {len(expected_lines)} lines, found {len(actual_lines)} (or another line end)"


def compare_file(expected_path, actual_text):
    if not expected_path.is_file():
        return [f"{expected_path.name} is missing"]
    # newline="" keeps line ends as they are
    with open(expected_path, encoding="utf-8", newline="") as file:
        expected = file.read()
    return [] if expected == actual_text else [f"{expected_path.name}: {first_difference(expected, actual_text)}"]


def read_written(path, problems):
    if not path.is_file():
        problems.append(f"{path.name} was not written")
        return ""
    with open(path, encoding="utf-8", newline="") as file:
        return file.read()


def check_stored(tally, runner, examples, folder, script, reports):
    """Printed text and reports equal the stored ones, from the example's folder and from the tree above it."""
    for place in ("own folder", "source root"):
        with tempfile.TemporaryDirectory() as scratch:
            scratch = Path(scratch)
            if place == "own folder":
                shutil.copytree(examples / folder, scratch, dirs_exist_ok=True)
                name = script
            else:
                shutil.copytree(examples / folder, scratch / "examples" / folder)
                name = f"examples/{folder}/{script}"
            run = Run(runner, name, scratch)
            problems = list(run.problems)
            # The one text that rightly differs is the path of a log found from the source root.
            printed = run.printed.replace(f"examples/{folder}/", "")
            problems += compare_file(examples / folder / Path(script).with_suffix(".expected"), printed)
            for report in reports:
                written = read_written(scratch / report, problems).replace(f"examples/{folder}/", "")
                problems += compare_file(examples / folder / (report + ".expected"), written)
            tally.check(f"{folder}/{script} from its {place}: stored output", problems)


# ---- gps_track, worked out a second time ----

class Track:
    """What a receiver's log says, read straight from its bytes."""

    def __init__(self, log):
        self.counts = Counter()
        self.heights, self.points = [], []
        records = log.replace(b"\0", b"").split(b"\n")
        if records[-1] == b"":
            records.pop()
        believed = [fields for fields in map(self.fields_of, records) if fields]
        self.source = "GGA" if any(record[3:7] == b"GGA," for record in records) else "RMC"
        for fields in believed:
            name = fields[0]
            if len(name) == 5 and not name.startswith("P") and name.endswith(self.source):
                self.take(fields + [""] * 20)

    def fields_of(self, record):
        """The fields of a sentence with a right checksum, else None; counts every line."""
        record = record.split(b"\r")[0]
        self.counts["Lines"] += 1
        if record[:1] == b"#":
            self.counts["Comments"] += 1
        elif record[:1] not in (b"$", b"!"):
            self.counts["Other lines"] += 1
        else:
            self.counts["Sentences"] += 1
            body, star, rest = record[1:].partition(b"*")
            if not star:
                self.counts["Without checksum"] += 1
                return None
            total = 0
            for byte in body:
                total ^= byte
            printable = all(32 <= byte <= 126 for byte in body)
            if not printable or rest[:2].upper() != b"%02X" % total:
                self.counts["Bad checksums"] += 1
                return None
            return body.decode("ascii").split(",")
        return None

    def take(self, fields):
        if self.source == "GGA":
            place, is_fix, height = fields[2:6], int(fields[6] or 0) > 0, fields[9]
        else:
            place, is_fix, height = fields[3:7], fields[2] == "A", ""
        if not is_fix or "" in place:
            self.counts["Without a fix"] += 1
            return
        self.counts["Fixes"] += 1
        self.points.append((self.radians(place[0], place[1], 2), self.radians(place[2], place[3], 3)))
        if height:
            self.heights.append(float(height))

    @staticmethod
    def radians(packed, side, degree_digits):
        degrees = int(packed[:degree_digits]) + float(packed[degree_digits:]) / 60
        return math.radians(-degrees if side in "SW" else degrees)

    def distance(self):
        """By the chord between two points of the sphere, not by the script's formula."""
        total = 0.0
        for one, other in zip(self.points, self.points[1:]):
            chord = math.dist(self.in_space(one), self.in_space(other))
            total += 2 * EARTH_RADIUS * math.asin(chord / 2)
        return total

    @staticmethod
    def in_space(point):
        latitude, longitude = point
        return (math.cos(latitude) * math.cos(longitude), math.cos(latitude) * math.sin(longitude),
                math.sin(latitude))


def printed_figures(printed):
    return {line[:20].strip(): line[20:].strip() for line in printed.splitlines()[1:]}


def leading_number(text):
    match = re.match(r"-?[0-9]+(\.[0-9]+)?", text or "")
    return float(match.group()) if match else None


def check_track(tally, runner, examples, name, log):
    track = Track(log)
    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        shutil.copy(examples / "gps_track" / "track.bas", scratch)
        (scratch / "track.log").write_bytes(log)
        run = Run(runner, "track.bas", scratch)
        problems = list(run.problems)
        report = read_written(scratch / "track_report.txt", problems)
    figures = printed_figures(run.printed)
    for key in ("Lines", "Comments", "Other lines", "Sentences", "Bad checksums", "Without checksum", "Fixes",
                "Without a fix"):
        if leading_number(figures.get(key)) != track.counts[key]:
            problems.append(f"{key}: expected {track.counts[key]}, printed {figures.get(key)!r}")
    rows = sum(1 for line in report.splitlines() if re.match(r" *[0-9]+ +[0-9-]{2}:", line))
    if rows != track.counts["Fixes"]:
        problems.append(f"the report has {rows} fixes, the log {track.counts['Fixes']}")
    if track.points:
        wanted, found = track.distance(), leading_number(figures.get("Distance"))
        # 0.1 %, or the rounding of the printed centimetres where that is more
        if found is None or abs(found - wanted) > max(0.001 * wanted, 0.0051):
            problems.append(f"Distance: expected {wanted:.4f}, printed {figures.get('Distance')!r}")
    if track.heights:
        for key, wanted in (("Lowest height", min(track.heights)), ("Highest height", max(track.heights))):
            found = leading_number(figures.get(key))
            if found is None or abs(found - wanted) > 0.0501:
                problems.append(f"{key}: expected {wanted}, printed {figures.get(key)!r}")
    tally.check(f"{name}: {track.counts['Lines']} lines, {track.counts['Bad checksums']} bad checksums, "
                f"{track.counts['Fixes']} fixes, {track.distance():.2f} m worked out again", problems)


def sentence(body, line_end=b"\r\n"):
    total = 0
    for byte in body.encode("ascii"):
        total ^= byte
    return f"${body}*{total:02X}".encode("ascii") + line_end


def made_logs():
    """Small logs for what neither the walk nor the real receivers show."""
    south = "GPGGA,235958,3354.0000,S,07030.0000,W,1,05,1.0,-12.6,M,,M,,"
    later = "GPGGA,000003,3354.0100,S,07030.0100,W,1,05,1.0,-11.5,M,,M,,"
    yield "empty log", b""
    yield "log without any fix", b"# nothing yet\n" + sentence("GPGGA,,,,,,0,00,,,M,,M,,") + b"\r\n\r\n"
    yield "southern and western fixes over midnight", sentence(south) + sentence(later)
    yield "LF line ends and no end of the last line", sentence(south, b"\n") + sentence(later, b"")
    yield "a receiver that sends no GGA", (sentence("GNRMC,101500.00,A,0000.5000,N,17959.9990,E,001.2,090.0,010299,,")
                                           + sentence("GNRMC,101510.00,A,0000.5000,S,17959.9990,W,001.5,090.0,010299,,"))
    yield "bytes that no sentence may hold", b"$GP\xff\xfe*00\r\n\x01\x02\r\n" + sentence(south)
    yield "a sentence with more fields than any known one", sentence("GPXXX" + "," * 60) + sentence(south)
    mixed = sentence(south)
    yield "a checksum in small letters, and stars with nothing around them", (
        mixed[:-4] + mixed[-4:].lower() + b"$GPGGA*\r\n$*00\r\n$\r\n*\r\n")


def check_walk_generator(tally, examples):
    with tempfile.TemporaryDirectory() as scratch:
        made = Path(scratch) / "walk.log"
        done = subprocess.run([sys.executable, str(examples / "gps_track" / "make_walk.py"), str(made)],
                              capture_output=True, timeout=TIMEOUT_SECONDS, check=False)
        problems = [] if done.returncode == 0 else [done.stderr.decode("utf-8", "replace")]
        if not problems and made.read_bytes() != (examples / "gps_track" / "walk.log").read_bytes():
            problems.append("make_walk.py writes other bytes than walk.log holds")
    tally.check("gps_track/make_walk.py reproduces walk.log", problems)


def check_real_logs(tally, runner, examples):
    data = os.environ.get("BRINDLE_TEST_DATA")
    if not data:
        tally.skip("BRINDLE_TEST_DATA is not set")
        return
    logs = sorted(path for path in (Path(data) / "nmea").glob("*") if path.is_file())
    tally.check("BRINDLE_TEST_DATA holds logs of real receivers", [] if logs else [f"no files in {data}/nmea"])
    for path in logs:
        check_track(tally, runner, examples, path.name, path.read_bytes())


# ---- angles, worked out a second time ----

def packed_degrees(text):
    degrees, digits = text.split(".")
    digits = digits.ljust(4, "0")
    return int(degrees) + int(digits[:2]) / 60 + float(digits[2:4] + "." + (digits[4:] or "0")) / 3600


def check_traverse(tally, runner, examples):
    script = (examples / "angles" / "traverse.bas").read_text(encoding="utf-8")
    observed = re.findall(r'call Observe\("(\w+)", ([0-9.]+), ([0-9.]+)\)', script)
    names = [name for name, _, _ in observed]
    angles = [packed_degrees(angle) for _, angle, _ in observed]
    lengths = [float(length) for _, _, length in observed]
    bearing = packed_degrees(re.search(r"StartBearing = dms2rad\(([0-9.]+)\)", script).group(1))
    start = complex(float(re.search(r"East\[0\] = ([0-9.]+)", script).group(1)),
                    float(re.search(r"North\[0\] = ([0-9.]+)", script).group(1)))

    count = len(angles)
    surplus = sum(angles) - (count - 2) * 180
    legs = []
    for i in range(count):
        if i > 0:
            bearing += 180 + angles[i] - surplus / count
        legs.append(lengths[i] * complex(math.sin(math.radians(bearing)), math.cos(math.radians(bearing))))
    gap = sum(legs)
    points = [start]
    for leg, length in zip(legs, lengths):
        points.append(points[-1] + leg - gap * length / sum(lengths))
    area = sum((one.conjugate() * other).imag for one, other in zip(points, points[1:])) / 2

    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        shutil.copy(examples / "angles" / "traverse.bas", scratch)
        run = Run(runner, "traverse.bas", scratch)
        problems = list(run.problems)
        written = read_written(scratch / "traverse_points.csv", problems)
    wanted = ["name;east;north"] + [f"{name};{point.real:.3f};{point.imag:.3f}" for name, point in zip(names, points)]
    if written.splitlines() != wanted:
        problems.append(first_difference("\n".join(wanted), written))
    figures = printed_figures(run.printed)
    for key, value in (("Angular misclosure", surplus * 3600), ("Linear misclosure", abs(gap)),
                       ("Perimeter", sum(lengths)), ("Area", area)):
        digits = {"Angular misclosure": 0, "Linear misclosure": 4, "Perimeter": 3, "Area": 1}[key]
        found = leading_number((figures.get(key) or "").lstrip("+"))
        if found is None or abs(found - value) > 0.51 * 10 ** -digits:
            problems.append(f"{key}: expected {value:.5f}, printed {figures.get(key)!r}")
    tally.check(f"angles/traverse.bas: {count} stations worked out again", problems)


# ---- stock_count, worked out a second time ----

def check_stock(tally, runner, examples):
    folder = examples / "stock_count"

    def rows(name):
        for line in (folder / name).read_text(encoding="utf-8").splitlines():
            if line.strip() and not line.startswith("#"):
                yield [part.strip() for part in line.split(";")]

    expected, counted, names, bad = Counter(), Counter(), {}, 0
    for article, name, quantity in rows("stock.csv"):
        names[article] = name
        expected[article] += int(quantity)
    for _, article, quantity in rows("counted.csv"):
        if quantity.isdigit():
            counted[article.upper()] += int(quantity)
            names.setdefault(article.upper(), "(not in the stock list)")
        else:
            bad += 1

    with tempfile.TemporaryDirectory() as scratch:
        shutil.copytree(folder, scratch, dirs_exist_ok=True)
        run = Run(runner, "count.bas", Path(scratch))
    problems = list(run.problems)
    wanted = []
    for article in sorted(names):
        difference = counted[article] - expected[article]
        wanted.append([article, names[article], str(expected[article]), str(counted[article])]
                      + ([f"{difference:+d}", "***"] if difference else []))
    lines = run.printed.splitlines()
    found = [[line[:9].strip(), line[9:33].strip()] + line[33:].split() for line in lines[1:len(wanted) + 1]]
    if found != wanted:
        problems.append(first_difference("\n".join(map(str, wanted)), "\n".join(map(str, found))))
    last = f"{len(wanted)} articles, {sum(len(row) > 4 for row in wanted)} with a difference, {bad} lines not understood"
    if last not in lines:
        problems.append(f"missing: {last!r}")
    tally.check(f"stock_count/count.bas: {len(wanted)} articles worked out again", problems)


# ---- gis_tables, worked out a second time ----

def decimal_text(number, decimals):
    return f"{number:.{decimals}f}"


def first_number(table):
    return next((i for i, field in enumerate(table.fields) if field.kind in "NF"), None)


class Join:
    """The first two tables of a folder that belong together, and the sums over them."""

    def __init__(self, tables):
        self.rows = None
        for many in tables.values():
            for key, field in enumerate(many.fields):
                one = tables.get(field.name[:-5].upper() + "S.DBF") if field.name.upper().endswith("_NAME") else None
                number = first_number(many)
                if self.rows is None and one and number is not None and any(f.name == "NAME" for f in one.fields):
                    self.work_out(many, key, number, one)

    def work_out(self, many, key, number, one):
        name = max(i for i, field in enumerate(one.fields) if field.name == "NAME")
        measure = first_number(one)
        decimals = many.fields[number].decimals
        self.rows, self.strangers = {}, 0
        for deleted, record in one.counted:
            if not deleted:
                area = [decimal_text(float(record[measure]), one.fields[measure].decimals)] if measure is not None else []
                self.rows.setdefault(record[name].strip(), [0, 0.0, area])
        for deleted, record in many.counted:
            row = self.rows.get(record[key].strip())
            if row is None:
                self.strangers += not deleted
            elif not deleted:
                row[0] += 1
                row[1] += float(record[number] or 0)
        self.fields = ["NAME", "RECORDS", many.fields[number].name] + ([one.fields[measure].name] if measure is not None
                                                                       else [])
        self.records = [[key, str(count), decimal_text(total, decimals)] + area
                        for key, (count, total, area) in self.rows.items()]


def check_tables(tally, runner, examples, name, paths):
    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        shutil.copy(examples / "gis_tables" / "tables.bas", scratch)
        for path in paths:
            shutil.copyfile(path, scratch / path.name)
        run = Run(runner, "tables.bas", scratch)
        problems = list(run.problems)
        changed = [path.name for path in paths if (scratch / path.name).read_bytes() != path.read_bytes()]
        if changed:
            problems.append(f"tables that are only read have changed: {changed}")
        summary = (scratch / "summary.dbf").read_bytes() if (scratch / "summary.dbf").is_file() else None
    tables = {path.name.upper(): read_table(path.read_bytes()) for path in sorted(paths)}

    wanted = []
    for path in sorted(paths):
        table = tables[path.name.upper()]
        wanted.append(f"{path.name}: {table.count} records of {len(table.fields)} fields")
        for field in table.fields:
            decimals = f", {field.decimals} decimals" if field.decimals else ""
            wanted.append(f"  {field.name:<12}{field.kind}{field.length:5}{decimals}")
        wanted.append("")
    printed = run.printed.splitlines()
    if printed[:len(wanted)] != wanted:
        problems.append("list of fields: " + first_difference("\n".join(wanted), "\n".join(printed[:len(wanted)])))
    join = Join(tables)
    if join.rows is None or summary is None:
        if (join.rows is None) != (summary is None):
            problems.append("summary.dbf was written without a join, or not written")
    else:
        written = read_table(summary)
        if [field.name for field in written.fields] != join.fields:
            problems.append(f"summary.dbf has the fields {[field.name for field in written.fields]}")
        found = [(deleted, [cell.rstrip() for cell in record]) for deleted, record in written.counted]
        problems += differences([(False, record) for record in join.records], found)
        if join.strangers and f"without a partner: {join.strangers}" not in printed:
            problems.append(f"not printed: {join.strangers} records without a partner")
    tally.check(f"{name}: {len(paths)} tables, {len(join.rows or [])} sums worked out again", problems)


def check_table_generator(tally, examples):
    folder = examples / "gis_tables"
    with tempfile.TemporaryDirectory() as scratch:
        done = subprocess.run([sys.executable, str(folder / "make_tables.py"), scratch], capture_output=True,
                              timeout=TIMEOUT_SECONDS, check=False)
        problems = [] if done.returncode == 0 else [done.stderr.decode("utf-8", "replace")]
        for path in sorted(folder.glob("*.dbf")):
            made = Path(scratch) / path.name
            if not made.is_file() or made.read_bytes() != path.read_bytes():
                problems.append(f"make_tables.py writes another {path.name}")
    tally.check("gis_tables/make_tables.py reproduces the tables", problems)


def check_real_tables(tally, runner, examples):
    data = os.environ.get("BRINDLE_TEST_DATA")
    if not data:
        tally.skip("BRINDLE_TEST_DATA is not set")
        return
    paths = sorted((Path(data) / "dbf").glob("*.dbf"))
    tally.check("BRINDLE_TEST_DATA holds real tables", [] if paths else [f"no tables in {data}/dbf"])
    check_tables(tally, runner, examples, "real tables", paths)
    for path in paths:
        check_tables(tally, runner, examples, f"{path.name} alone", [path])


# ---- site_visits and controls ----

# What the commands of visits.input leave in the table, field by field.
VISITS = [
    ["North pond", "Pond", "20260504", "09:30:00", "A. Lindqvist", "3", "Rain", "T", "F", "70",
     "Reeds cut back. Two nests."],
    ["Mill meadow", "Meadow", "20260504", "11:15:00", "A. Lindqvist", "12", "Dry", "T", "F", "55",
     "Fence broken at the gate."],
]


def check_forms(tally, command, examples, folder, script, place):
    """An example with forms: its printed text, and for site_visits the records of the table that the forms fill."""
    source = examples / folder
    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        shutil.copytree(source, scratch, dirs_exist_ok=True)
        with open((source / script).with_suffix(".input"), "rb") as commands:
            done = subprocess.run(command, cwd=scratch, stdin=commands, capture_output=True, timeout=TIMEOUT_SECONDS,
                                  check=False)
        problems = [] if done.returncode == 0 else [f"exit status {done.returncode}", done.stderr.decode()]
        problems += compare_file((source / script).with_suffix(".expected"), done.stdout.decode("utf-8", "replace"))
        if folder == "site_visits":
            table = scratch / "visits.dbf"
            rows = [[value.strip() for value in values] for _, values in
                    (read_table(table.read_bytes()).counted if table.is_file() else [])]
            if rows != VISITS:
                problems.append(f"visits.dbf: expected {VISITS}, found {rows}")
    tally.check(f"{folder}/{script} {place}", problems)


def main():
    parser = argparse.ArgumentParser(description="Runs the example scripts and checks what they print and write.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    parser.add_argument("--windows", type=Path, help="the program that drives windows by commands (qt_pictures)")
    parser.add_argument("examples", type=Path, help="the folder of the examples")
    arguments = parser.parse_args()
    runner, examples = arguments.runner.resolve(), arguments.examples.resolve()
    if not os.access(runner, os.X_OK) or not examples.is_dir():
        parser.error("no such runner or examples folder")

    tally = Tally()
    for folder, script, reports in EXAMPLES:
        check_stored(tally, runner, examples, folder, script, reports)
    check_walk_generator(tally, examples)
    check_track(tally, runner, examples, "walk.log", (examples / "gps_track" / "walk.log").read_bytes())
    for name, log in made_logs():
        check_track(tally, runner, examples, name, log)
    check_real_logs(tally, runner, examples)
    check_traverse(tally, runner, examples)
    check_stock(tally, runner, examples)
    check_table_generator(tally, examples)
    check_tables(tally, runner, examples, "gis_tables", sorted((examples / "gis_tables").glob("*.dbf")))
    check_real_tables(tally, runner, examples)
    for folder, script in (("site_visits", "visits.bas"), ("controls", "controls.bas")):
        check_forms(tally, [str(runner), "--ui=console", "--on-error=abort", script], examples, folder, script,
                    "on the console")
        if arguments.windows:
            check_forms(tally, [str(arguments.windows.resolve()), script, "."], examples, folder, script, "in windows")
    print(tally.summary())
    return 1 if tally.failed else 0


if __name__ == "__main__":
    sys.exit(main())
