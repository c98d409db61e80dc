#!/usr/bin/env python3
"""Makes what fuzzers start from: FOLDER/TARGET/* for each of them, and the words of the language as a dictionary.

Everything comes from this source tree: programs are the examples and the script tests, expressions and formats are
cut out of them, tables and dialog templates are packed here.
"""

import argparse
import re
import shutil
import struct
import sys
from pathlib import Path

FUZZ_FOLDER = Path(__file__).resolve().parent
ROOT = FUZZ_FOLDER.parent.parent
sys.path.insert(0, str(FUZZ_FOLDER.parent / "hostile"))
from run_hostile import vocabulary  # noqa: E402

LARGEST = 4096  # bytes of a program; a longer one slows every run down
FEW = 4         # every how many programs are taken with --some


def scripts():
    for path in sorted(ROOT.glob("examples/*/*.bas")) + sorted(ROOT.glob("tests/scripts/*/*.bas")):
        contents = path.read_bytes()
        if len(contents) <= LARGEST:
            yield path.parent.name + "." + path.stem, contents


def expressions():
    """Right-hand sides, printed values and conditions, each once."""
    found = set()
    for _, contents in scripts():
        for line in contents.decode("utf-8", "replace").splitlines():
            line = line.split("#")[0].strip()
            taken = re.match(r"(?:print|if|do while)\s+(.*?)(?:\s+then)?$|[\w.\[\]]+\s*=\s*(.*)$", line, re.IGNORECASE)
            if taken:
                found.add((taken.group(1) or taken.group(2) or "").strip())
    return sorted(text for text in found if 0 < len(text) <= 100)


def formats():
    found = {"%d", "%5.2f", "%-10s|", "%08.3e", "%#x", "%+lld", "%%%c", "%.0f", "%g", "%a", "%*d", "%.20G", "% i", "%hho"}
    for _, contents in scripts():
        found.update(re.findall(r'format\s*\(.*?,\s*"([^"]*)"', contents.decode("utf-8", "replace")))
    values = [b"\0" + struct.pack("<d", number) for number in (0.0, -1.5, 1e300, 12345.678, 5e-324, float("inf"))]
    values += [b"\1" + struct.pack("<i", number) for number in (0, -1, 2147483647)]
    values += [b"\2" + struct.pack("<h", 20), b"\3\5hello"]
    for text in sorted(found):
        for value in values:
            yield value + text.encode()


def wide(text):
    return text.encode("utf-16-le") + b"\0\0"


def dialog_templates():
    def item(style, kind, caption, number):
        kind = struct.pack("<HH", 0xFFFF, kind) if isinstance(kind, int) else wide(kind)
        return struct.pack("<IIhhhhH", style, 0, 5, 6 * number, 50, 14, number) + kind + wide(caption) + b"\0\0"

    def template(items, font):
        style = 0x80CC0080 | (0x40 if font else 0)
        text = struct.pack("<IIHhhhhHH", style, 0, len(items), 0, 0, 200, 100, 0, 0) + wide("Title")
        text += struct.pack("<H", 8) + wide("Sans") if font else b""
        for part in items:
            text += bytes(-len(text) % 4) + part
        return text + bytes(-len(text) % 4)

    kinds = [(0, 0x80), (2, 0x80), (9, 0x80), (7, 0x80), (0, 0x81), (4, 0x81), (0x2000, 0x81), (0, 0x82), (14, 0x82),
             (0, 0x83), (8, 0x83), (0, 0x85), (0, "SysDateTimePick32"), (0, "SysTreeView32"), (2, "msctls_trackbar32"),
             (0, "SysTabControl32"), (0, "")]
    items = [item(0x50010000 | style, kind, "Caption %d" % i, i) for i, (style, kind) in enumerate(kinds)]
    yield template([], False)
    yield template([], True)
    yield template(items, True)
    for part in items:
        yield template([part], False)


def tables():
    def table(fields, records, record_length=None, count=None, extra=b"\x1a", room=0):
        length = 1 + sum(field[2] for field in fields)
        text = struct.pack("<BBBBIHH20x", 3, 26, 1, 2, len(records) if count is None else count,
                           33 + 32 * (len(fields) + room), record_length or length)
        for name, letter, size, decimals in fields:
            text += struct.pack("<11sc4xBB14x", name, letter, size, decimals)
        text += b"\r" + bytes(32 * room)
        for record in records:
            text += record.ljust(length)[:length]
        return text + extra

    plain = [(b"NAME", b"C", 8, 0), (b"COUNT", b"N", 6, 2), (b"DAY", b"D", 8, 0), (b"DONE", b"L", 1, 0),
             (b"RATE", b"F", 10, 4), (b"OTHER", b"M", 10, 0)]
    rows = [b" first   12.5020260102T    0.2500", b"*second   1.0020260103F   -1.0000", b" \x84\xc3\xa9\0 ab"]
    yield table(plain, rows)
    yield table(plain, rows, extra=b"")
    yield table(plain, rows, room=3)
    yield table(plain, rows, record_length=12)
    yield table(plain, rows, record_length=200)
    yield table(plain, rows, count=0xFFFFFFFF)
    yield table([], [])
    yield table([(b"ELEVENCHARS", b"C", 255, 255)], [b" " + b"x" * 255] * 4)
    for path in sorted(ROOT.glob("examples/gis_tables/*.dbf")):
        if path.stat().st_size <= LARGEST:
            yield path.read_bytes()


def table_inputs():
    steps = bytes([0x80, 3]) + b"abc" + bytes([1]) + b"1" + bytes([0] * 8) + bytes([1, 1, 2, 0, 3, 1, 5, 6, 7])
    for number, text in enumerate(tables()):
        yield bytes([number % 4, 0]) + text
        yield bytes([0x20 + 7 * 4 + number % 4, len(steps)]) + steps + text


def text_files():
    texts = [b"", b"one\n", b"one\r\ntwo\r\n\r\nlast", b"\n\n\n", b"a\rb\nc\0d\0\n\0\0", "Grüße, Ünïcode €\nzwei\n".encode(),
             b"\x82\xa0\x82\xa2\n\x80\xff\n", b"\xff\xfe" + "eins\r\nzwei\n\ndrei".encode("utf-16-le"), b"\xff\xfea",
             b"x" * 300 + b"\n" + b"y" * 300]
    for page in range(8):
        for text in texts:
            yield bytes([page]) + text
            yield bytes([page | 0xC8 | 16, min(len(text) // 2, 255)]) + text


def console_commands():
    """The input of the examples and of the script tests with dialogs, and every command for every control."""
    for path in sorted(ROOT.glob("examples/*/*.input")):
        yield path.read_bytes()[:LARGEST]
    for name, contents in scripts():
        if name.startswith("dialogs."):
            lines = re.findall(r"# input: (.*)", contents.decode("utf-8", "replace"))
            if lines:
                yield "\n".join(lines).encode()
    for command in ("click %d", "type %d text", "select %d 1", "set %d 50", "set %d 2026-02-28 12:30:00", "menu %d 0"):
        yield "\n".join(command % control for control in range(3, 18)).encode() + b"\nmenu window 0\nshow\nok\n"


def enciphered():
    for _, contents in scripts():
        if contents.lstrip()[:7].lower() == b"encrypt":
            yield contents
    numbers = ",".join(str(i * 37 % 256) for i in range(32))
    yield b"encrypt\r\n " + numbers.encode() + b"\r\n"
    yield b"\n\tENCRYPT\n  -1, +2,2147483648,3"
    yield b"encrypt:\nprint 1\n"
    yield b"print 1\n"


def write(folder, inputs):
    folder.mkdir(parents=True)
    for number, contents in enumerate(inputs):
        name, contents = contents if isinstance(contents, tuple) else ("%04d" % number, contents)
        (folder / name).write_bytes(contents)


def write_dictionary(path):
    """The words of the language, its signs, and what its statements often hold."""
    signs = list("()[]=+-*/^%<>,;:!~#'&_.") + ["=>", "<=", "<>", "\n", "\r\n", '"', '""', "1.5", "1e308", "x__#1", "True",
                                               "Nothing", "x[", "r.f", "f("]
    with open(path, "w", encoding="ascii") as file:
        for word in vocabulary() + signs:
            escaped = "".join("\\x%02x" % ord(sign) if sign in '"\\' or ord(sign) < 32 else sign for sign in word)
            file.write('"%s"\n' % escaped)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=Path)
    parser.add_argument("--some", action="store_true", help="fewer programs, for a replay that is to be short")
    arguments = parser.parse_args()
    shutil.rmtree(arguments.folder, ignore_errors=True)
    programs = list(scripts())
    if len(programs) < 100:
        raise SystemExit("the programs are not where they were")
    if arguments.some:
        programs = programs[::FEW]
    write(arguments.folder / "tokens", programs)
    write(arguments.folder / "script", programs)
    write(arguments.folder / "expression", [text.encode() for text in expressions()][::FEW if arguments.some else 1])
    write(arguments.folder / "format", formats())
    write(arguments.folder / "dialog_template", dialog_templates())
    write(arguments.folder / "table", table_inputs())
    write(arguments.folder / "console_dialog", console_commands())
    write(arguments.folder / "text_lines", text_files())
    write(arguments.folder / "enciphered", enciphered())
    write_dictionary(arguments.folder / "words.dict")
    return 0


if __name__ == "__main__":
    sys.exit(main())
