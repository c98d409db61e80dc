"""Two readers of dBase tables that share nothing with the library: one written here, and dbfdump of shapelib.

Used by check_real_tables.py, check_written_tables.py, check_table_durability.py and run_examples.py.
"""
import shutil
import struct
import subprocess
from dataclasses import dataclass
from pathlib import Path

TERMINATOR = 0x0D


class NoTable(Exception):
    """The bytes are no table that can be read, with the reason."""


@dataclass
class Field:
    name: str
    kind: str
    length: int
    decimals: int


@dataclass
class Table:
    fields: list
    count: int           # as the header says
    header_length: int
    record_length: int
    rows: list           # every whole record of the file: (deleted, [value, ...]), blanks kept

    @property
    def counted(self):
        """The records that the header counts and the file holds."""
        return self.rows[:self.count]


def text_of(raw, kind, encoding):
    """Text ends at a zero byte; a logical value is one character."""
    return (raw[:1] if kind == "L" else raw).split(b"\0")[0].decode(encoding, "replace")


def read_table(data, encoding="cp1252"):
    if len(data) < 33:
        raise NoTable("shorter than a header")
    count, header_length, record_length = struct.unpack_from("<IHH", data, 4)
    if header_length < 33:
        raise NoTable(f"a header length of {header_length}")
    fields, at = [], 32
    while at + 33 <= header_length and at < len(data) and data[at] != TERMINATOR:
        if at + 32 > len(data):
            raise NoTable("the descriptors end early")
        name, kind, length, decimals = struct.unpack_from("<11sc4xBB14x", data, at)
        fields.append(Field(name.split(b"\0")[0].decode(encoding, "replace"), kind.decode("latin-1"), length,
                            decimals))
        at += 32
    if at >= len(data):
        raise NoTable("no terminator")
    rows = []
    if record_length > 0:
        for start in range(header_length, len(data) - record_length + 1, record_length):
            record, offset, values = data[start:start + record_length], 1, []
            for field in fields:
                values.append(text_of(record[offset:offset + field.length], field.kind, encoding))
                offset += field.length
            rows.append((record[:1] == b"*", values))
    return Table(fields, count, header_length, record_length, rows)


def find_dbfdump():
    return shutil.which("dbfdump")


def dump_rows(dbfdump, path, encoding="cp1252"):
    """What `dbfdump -r` says about a table: (deleted, [value, ...]) without outer blanks, None when it cannot read it.

    The form with one line a field is used: it is the one whose values can be told apart for certain.
    """
    done = subprocess.run([dbfdump, "-r", "-m", str(path)], capture_output=True, timeout=60, check=False)
    if done.returncode != 0:
        return None
    rows = []
    for line in done.stdout.decode(encoding, "replace").split("\n"):
        if line.startswith("Record: "):
            rows.append((False, []))
        elif line.startswith("(DELETED)"):
            rows[-1] = (True, rows[-1][1])
        elif line.strip():
            if not rows:
                return None  # a message instead of records
            rows[-1][1].append(line.partition(": ")[2].strip())
    return rows


def stripped(rows):
    return [(deleted, [value.strip() for value in values]) for deleted, values in rows]


def differences(expected, found):
    if len(expected) != len(found):
        return [f"expected {len(expected)} records, found {len(found)}"]
    for number, (wanted, got) in enumerate(zip(expected, found)):
        if wanted != got:
            return [f"record {number}: expected {wanted!r}, found {got!r}"]
    return []


def encoding_of(path):
    """The code page that a file beside the table names, windows-1252 without one."""
    for beside in Path(path).parent.glob("*"):
        if beside.stem == Path(path).stem and beside.suffix.lower() == ".cpg":
            name = beside.read_text(encoding="ascii").strip()
            return name if not name.isdigit() else "cp" + name
    return "cp1252"


class Tally:
    """Counts the checks and names those that fail."""

    def __init__(self):
        self.passed = self.failed = self.skipped = 0

    def check(self, name, problems):
        if problems:
            self.failed += 1
            print(f"FAILED {name}")
            for problem in problems:
                print(f"    {problem}")
        else:
            self.passed += 1
            print(f"ok     {name}")

    def skip(self, reason):
        self.skipped += 1
        print(f"skipped: {reason}")

    def summary(self):
        text = f"{self.passed} passed, {self.failed} failed"
        return text + (f", {self.skipped} skipped" if self.skipped else "")

    def finish(self):
        """Prints the sums; the exit status: 77 when there was nothing to check."""
        print(self.summary())
        if self.failed:
            return 1
        return 0 if self.passed else 77
