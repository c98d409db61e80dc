#!/usr/bin/env python3
"""Checks which room includes which, and that headers say what they are.

Every folder of src/ is a room; a header of include/brindle belongs to the room
that its opening comment names.  A file may include headers of its own room and
of the rooms that its room stands on, nothing else:

    platform <- values <- interpreter <- data, calls, io <- ui <- check <- tools

Components, which stand beside the library, include public headers only.

data, calls and io do not know each other.  The one exception is the
composition header src/interpreter/state.h, which puts the state classes of
these three rooms together.  Only src/platform includes headers of the
operating system, and only src/ui/qt, a library of its own, those of Qt.

    python3 tests/check_rooms.py [ROOT]
    python3 tests/check_rooms.py --self-test
"""

import argparse
import re
import sys
import tempfile
from pathlib import Path

BELOW_DATA = {"platform", "values", "interpreter"}
MAY_INCLUDE = {
    "platform": {"platform"},
    "values": {"platform", "values"},
    "interpreter": BELOW_DATA,
    "data": BELOW_DATA | {"data"},
    "calls": BELOW_DATA | {"calls"},
    "io": BELOW_DATA | {"io"},
    "ui": BELOW_DATA | {"data", "calls", "io", "ui"},
    "check": BELOW_DATA | {"data", "calls", "io", "ui", "check"},
    "tools": BELOW_DATA | {"data", "calls", "io", "ui", "check", "tools"},
    "components": BELOW_DATA | {"calls", "components"},  # public headers only
}

COMPOSITION = "src/interpreter/state.h"
COMPOSED_ROOMS = {"data", "calls", "io"}

# A public header may need one that only asks the system what it is.
ALLOWED_SYSTEM_HEADERS = {("include/brindle/text.h", "sys/single_threaded.h")}
# On Windows the Automation types are the system's own.
ALLOWED_SYSTEM_HEADERS |= {("include/brindle/automation.h", name) for name in ("oaidl.h", "oleauto.h")}

SYSTEM_FOLDERS = ("sys/", "linux/", "asm/", "arpa/", "net/", "netinet/", "bits/", "mach/", "X11/", "gtk/")
SYSTEM_HEADERS = {
    "aio.h", "byteswap.h", "dirent.h", "dlfcn.h", "endian.h", "err.h", "execinfo.h", "fcntl.h", "features.h",
    "fnmatch.h", "ftw.h", "getopt.h", "glob.h", "grp.h", "iconv.h", "ifaddrs.h", "langinfo.h", "libgen.h", "libintl.h",
    "link.h", "malloc.h", "mqueue.h", "netdb.h", "nl_types.h", "oaidl.h", "objbase.h", "ole2.h", "oleauto.h",
    "paths.h", "poll.h", "pthread.h", "pty.h", "pwd.h", "regex.h", "resolv.h", "sched.h", "semaphore.h", "shellapi.h",
    "signal.h", "csignal", "spawn.h", "strings.h", "sysexits.h", "syslog.h", "termios.h", "ucontext.h", "ulimit.h",
    "unistd.h", "utime.h", "utmp.h", "wait.h", "winbase.h", "windows.h", "winsock.h", "winsock2.h", "wordexp.h",
}
QT_HEADER = re.compile(r"Q[A-Z][A-Za-z]*|Qt[A-Z]?[A-Za-z]*/.*|QtGlobal")
SOURCE_ENDINGS = {".h", ".cpp", ".inc"}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
ROOM_LINE = re.compile(r"^// Room: ([a-z]+)\b.*\bUsed by: \S", re.MULTILINE)
COMMENTS = re.compile(r'("(?:[^"\\\n]|\\.)*")|//[^\n]*|/\*.*?\*/', re.DOTALL)


def without_comments(text):
    """The text with its comments blanked; quoted texts and line numbers stay."""
    def blank(match):
        return match.group(1) or "\n" * match.group(0).count("\n")
    return COMMENTS.sub(blank, text)


def opening_comment(text):
    lines = []
    for line in text.splitlines():
        if not line.startswith("//"):
            break
        lines.append(line)
    return "\n".join(lines)


class Checker:
    def __init__(self, root):
        self.root = root
        self.faults = []
        self.public_rooms = {}
        self.files = {}
        for folder in ("include/brindle", "src", "tools", "components"):
            for path in sorted((root / folder).rglob("*")):
                if path.is_file() and path.suffix in SOURCE_ENDINGS:
                    self.files[path.relative_to(root).as_posix()] = path.read_text(encoding="utf-8")
        for name, text in self.files.items():
            if name.startswith("include/brindle/"):
                found = ROOM_LINE.search(opening_comment(text))
                if found is not None:
                    self.public_rooms["brindle/" + Path(name).name] = found.group(1)

    def fault(self, name, line, message):
        place = f"{name}:{line}" if line else name
        self.faults.append(f"{place}: {message}")

    def run(self):
        if not any(name.startswith("src/") for name in self.files):
            self.fault("src", 0, "no sources found")
        for name, text in self.files.items():
            if name.endswith(".h"):
                self.check_header(name, text)
            self.check_includes(name, text)
        return self.faults

    def room_of_file(self, name):
        parts = name.split("/")
        if parts[0] == "src":
            return parts[1] if len(parts) > 2 else None
        if parts[0] in ("tools", "components"):
            return parts[0]
        return self.public_rooms.get("brindle/" + parts[-1])

    def room_of_include(self, name, included):
        """The room of an included header; None for what is none of ours."""
        if included.startswith("brindle/"):
            return self.public_rooms.get(included, "?")
        if "src/" + included in self.files:
            return included.split("/")[0]
        beside = Path(name).parent / included
        if beside.as_posix() in self.files:
            return self.room_of_file(beside.as_posix())
        return None

    def check_header(self, name, text):
        if not re.search(r"^#pragma once$", text, re.MULTILINE):
            self.fault(name, 1, "no #pragma once")
        comment = opening_comment(text)
        if not comment:
            self.fault(name, 1, "no opening comment")
            return
        room = ROOM_LINE.search(comment)
        if room is None:
            self.fault(name, 1, 'no line "// Room: NAME. Used by: ..." in the opening comment')
        elif room.group(1) not in MAY_INCLUDE:
            self.fault(name, 1, f"unknown room {room.group(1)}")
        elif room.group(1) != self.room_of_file(name):
            self.fault(name, 1, f"stands in {self.room_of_file(name)} and says that it belongs to {room.group(1)}")
        if not re.search(r"^// Invariant: \S", comment, re.MULTILINE):
            self.fault(name, 1, 'no line "// Invariant: ..." in the opening comment')

    def check_includes(self, name, text):
        room = self.room_of_file(name)
        if room not in MAY_INCLUDE:
            self.fault(name, 1, f"belongs to no room ({room})")
            return
        code = without_comments(text)
        for match in INCLUDE.finditer(code):
            line = code.count("\n", 0, match.start(1) if match.group(1) else match.start(2)) + 1
            included = match.group(1) or match.group(2)
            target = self.room_of_include(name, included)
            if target == "?":
                self.fault(name, line, f"includes {included}, whose room is not known")
            elif room == "components" and "src/" + included in self.files:
                self.fault(name, line, f"a component includes the library's own {included}")
            elif target is not None:
                composed = name == COMPOSITION and target in COMPOSED_ROOMS
                if target not in MAY_INCLUDE[room] and not composed:
                    self.fault(name, line, f"{room} may not include {target} ({included})")
            elif match.group(1) is not None:
                self.fault(name, line, f"includes {included}, which does not exist")
            elif QT_HEADER.fullmatch(included) and not name.startswith("src/ui/qt/"):
                self.fault(name, line, f"only src/ui/qt includes headers of Qt (<{included}>)")
            elif self.is_system_header(included) and room not in ("platform", "tools", "components"):
                self.fault(name, line, f"only platform includes system headers (<{included}>)")
            elif self.is_system_header(included) and name.startswith("include/"):
                if (name, included) not in ALLOWED_SYSTEM_HEADERS:
                    self.fault(name, line, f"a public header includes a system header (<{included}>)")

    @staticmethod
    def is_system_header(included):
        return included in SYSTEM_HEADERS or included.startswith(SYSTEM_FOLDERS)


# ---- self-test: small trees, each with the faults that it has to show.

GOOD_HEADER = """// What it is.
// Room: {room}. Used by: tests.
// Invariant: none.
#pragma once
{body}
"""


def header(room, body=""):
    return GOOD_HEADER.format(room=room, body=body)


GOOD_TREE = {
    "include/brindle/text.h": header("platform", "#include <sys/single_threaded.h>"),
    "include/brindle/variable.h": header("values", '#include "brindle/text.h"'),
    "include/brindle/interpreter.h": header("interpreter", '#include "brindle/variable.h"'),
    "src/platform/file.h": header("platform"),
    "src/platform/file.cpp": '#include "platform/file.h"\n#include <fcntl.h>\n',
    "src/values/messages.h": header("values", '#include "platform/file.h"\n#include <string>'),
    "src/interpreter/state.h": header("interpreter", '#include "data/store.h"\n#include "io/files.h"'),
    "src/data/store.h": header("data", '#include "interpreter/state.h"'),
    "src/io/files.h": header("io"),
    "src/io/deep/part.cpp": '#include "io/files.h"\n#include <cstdio>\n',
    "src/ui/qt/box.cpp": "#include <QMessageBox>\n",
    "src/check/walk.cpp": '#include "data/store.h"\n#include "io/files.h"\n',
    "src/ui/box.cpp": '#include "data/store.h"\n#include "io/files.h"\n// #include <unistd.h>\n',
    "tools/runner/main.cpp": '#include <brindle/interpreter.h>\n#include "platform/file.h"\n#include <unistd.h>\n',
}

# Name, files that replace those of the good tree, and a part of the one fault expected.
BAD_TREES = [
    ("room above", {"src/platform/file.cpp": '#include "values/messages.h"\n'}, "platform may not include values"),
    ("line number", {"src/platform/file.cpp": '\n/* a\n b */\n#include "values/messages.h"\n'}, "file.cpp:4:"),
    ("public header above", {"src/platform/file.cpp": "#include <brindle/variable.h>\n"},
     "platform may not include values"),
    ("sibling", {"src/io/deep/part.cpp": '#include "data/store.h"\n'}, "io may not include data"),
    ("composition is one file", {"src/interpreter/other.h": header("interpreter", '#include "io/files.h"')},
     "interpreter may not include io"),
    ("composition takes no ui", {"src/ui/box.h": header("ui"),
                                 "src/interpreter/state.h": header("interpreter", '#include "ui/box.h"')},
     "interpreter may not include ui"),
    ("values on interpreter", {"src/values/x.cpp": '#include "brindle/interpreter.h"\n'},
     "values may not include interpreter"),
    ("ui from io", {"src/ui/box.h": header("ui"), "src/io/x.cpp": '#include "ui/box.h"\n'}, "io may not include ui"),
    ("check from ui", {"src/check/rules.h": header("check"), "src/ui/box.cpp": '#include "check/rules.h"\n'},
     "ui may not include check"),
    ("beside, in another folder's words", {"src/ui/box.h": header("ui"), "src/io/x.cpp": '#include "../ui/box.h"\n'},
     "does not exist"),
    ("missing", {"src/io/x.cpp": '#include "io/nowhere.h"\n'}, "does not exist"),
    ("no pragma", {"src/io/files.h": "// A.\n// Room: io. Used by: b.\n// Invariant: c.\n"}, "no #pragma once"),
    ("no comment", {"src/io/files.h": "#pragma once\n"}, "no opening comment"),
    ("no room", {"src/io/files.h": "// A.\n// Used by: b.\n// Invariant: c.\n#pragma once\n"}, "Room: NAME"),
    ("no user", {"src/io/files.h": "// A.\n// Room: io.\n// Invariant: c.\n#pragma once\n"}, "Room: NAME"),
    ("no invariant", {"src/io/files.h": "// A.\n// Room: io. Used by: b.\n#pragma once\n"}, "Invariant"),
    ("wrong room", {"src/io/files.h": header("data")}, "says that it belongs to data"),
    ("unknown room", {"src/io/files.h": header("attic")}, "unknown room attic"),
    ("system header", {"src/io/x.cpp": "#include <unistd.h>\n"}, "<unistd.h>"),
    ("system folder", {"src/values/x.cpp": "# include <sys/stat.h>\n"}, "<sys/stat.h>"),
    ("windows", {"src/ui/x.cpp": "#include <windows.h>\n"}, "<windows.h>"),
    ("Qt in another folder", {"src/ui/x.cpp": "#include <QWidget>\n"}, "<QWidget>"),
    ("Qt in a public header", {"include/brindle/more.h": header("ui", "#include <QtWidgets/QWidget>")},
     "<QtWidgets/QWidget>"),
    ("public system header", {"include/brindle/more.h": header("platform", "#include <poll.h>")}, "<poll.h>"),
    ("allowed header elsewhere", {"include/brindle/more.h": header("platform", "#include <sys/single_threaded.h>")},
     "<sys/single_threaded.h>"),
    ("component inside", {"components/x/a.cpp": '#include "platform/file.h"\n'}, "the library's own platform/file.h"),
    ("file outside the rooms", {"src/x.cpp": "int x;\n"}, "belongs to no room"),
    ("folder that is no room", {"src/attic/x.cpp": "int x;\n"}, "belongs to no room"),
]


def faults_of(tree):
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        for name, text in tree.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return Checker(root).run()


def self_test():
    failures = []
    found = faults_of(GOOD_TREE)
    if found:
        failures.append(f"good tree: {found}")
    if not faults_of({"tools/x.cpp": ""}):
        failures.append("empty tree: no fault")
    for name, changes, expected in BAD_TREES:
        found = faults_of({**GOOD_TREE, **changes})
        if len(found) != 1 or expected not in found[0]:
            failures.append(f"{name}: expected one fault with {expected!r}, found {found}")
    for failure in failures:
        print(failure)
    print(f"{len(BAD_TREES) + 2 - len(failures)} of {len(BAD_TREES) + 2} self-tests passed")
    return 1 if failures else 0


def main():
    parser = argparse.ArgumentParser(description="Checks which room includes which.")
    parser.add_argument("root", nargs="?", type=Path, default=Path(__file__).resolve().parent.parent)
    parser.add_argument("--self-test", action="store_true", help="checks the checker on small trees")
    arguments = parser.parse_args()
    if arguments.self_test:
        return self_test()
    checker = Checker(arguments.root)
    for fault in checker.run():
        print(fault)
    print(f"{len(checker.files)} files, {len(checker.faults)} faults")
    return 1 if checker.faults else 0


if __name__ == "__main__":
    sys.exit(main())
