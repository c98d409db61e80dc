#!/usr/bin/env python3
"""Scripts that use objects of server libraries: registering, faulty servers, files and folders.

Usage: run_components.py --runner BRINDLE --faulty LIBRARY --no-classes LIBRARY --no-server LIBRARY

Every check runs in a fresh folder with data folders of its own, so that nothing of the user's counts.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

failures = []
checks = 0


def check(name, condition, detail=""):
    global checks
    checks += 1
    if not condition:
        failures.append(name)
        print(f"FAIL {name}\n{detail}")


class Place:
    """A folder to run in, with its own data folder for the user."""

    def __init__(self, runner, folder):
        self.runner = runner
        self.folder = pathlib.Path(folder)
        self.environment = dict(os.environ, XDG_DATA_HOME=str(self.folder / "data"))

    def brindle(self, *words):
        return subprocess.run([self.runner, *words], cwd=self.folder, env=self.environment, capture_output=True,
                              text=True, timeout=60, check=False)

    def script(self, text):
        (self.folder / "script.bas").write_text(text, encoding="utf-8")
        return self.brindle("--on-error=continue", "script.bas")

    def expect(self, name, text, output, notices=()):
        result = self.script(text)
        check(name, (result.stdout, result.stderr, result.returncode) ==
              ("".join(line + "\n" for line in output), "".join(line + "\n" for line in notices),
               1 if notices else 0), f"{result.stdout}{result.stderr}exit {result.returncode}")

    def servers(self):
        return sorted(path.name for path in (self.folder / "data/brindle/servers").glob("*"))


def registering(place, options):
    result = place.script('o = createobject("Test.Faulty")\n')
    check("an unknown class", (result.stdout, result.stderr, result.returncode) ==
          ("", "Invalid class string (Test.Faulty)\n", 1), result.stderr)

    result = place.brindle("register", options.faulty)
    check("register is silent", (result.stdout, result.stderr, result.returncode) == ("", "", 0), result.stderr)
    check("one file", place.servers() == ["faulty_server.server"], place.servers())
    place.expect("found in any case", 'o = createobject("TEST.faulty")\nprint "[" ; o.none ; "]"\n', ["[]"])
    place.expect("blanks around an identifier do not count",
                 'o = createobject("Test.Throwing")\n', [], ["The object failed: no object today"])

    result = place.brindle("register", os.path.relpath(options.faulty, place.folder))
    check("registered twice, by another path, is one file",
          result.returncode == 0 and place.servers() == ["faulty_server.server"], place.servers())

    copy = place.folder / "other" / "faulty_server.so"
    copy.parent.mkdir()
    copy.write_bytes(pathlib.Path(options.faulty).read_bytes())
    check("a library of the same name elsewhere", place.brindle("register", str(copy)).returncode == 0)
    check("has a file of its own", place.servers() == ["faulty_server-2.server", "faulty_server.server"],
          place.servers())
    copy.unlink()
    result = place.brindle("unregister", str(copy))
    check("a library that is gone is unregistered", (result.stderr, result.returncode) == ("", 0), result.stderr)

    result = place.brindle("unregister", options.faulty)
    check("unregister is silent", (result.stdout, result.stderr, result.returncode) == ("", "", 0), result.stderr)
    check("no file is left", place.servers() == [], place.servers())
    result = place.brindle("unregister", options.faulty)
    check("unregistering twice fails", result.returncode == 1 and
          result.stderr == f"brindle unregister: {options.faulty}: not registered by this user\n", result.stderr)

    (place.folder / "text.so").write_text("no library\n" * 100, encoding="utf-8")
    for words, status, text in (
            (["register"], 2, "usage: brindle register FILE\n"),
            (["unregister"], 2, "usage: brindle unregister FILE\n"),
            (["register", ""], 2, "usage: brindle register FILE\n"),
            (["register", "a", "b"], 2, "usage: brindle register FILE\n"),
            (["register", "missing.so"], 1, f"brindle register: {place.folder}/missing.so: no such file\n"),
            (["register", "."], 1, f"brindle register: {place.folder}: no such file\n"),
            (["register", "text.so"], 1, "invalid ELF header"),
            (["register", options.no_server], 1, "no server library, it exports no BrindleClassIdentifiers\n"),
            (["register", options.no_classes], 1, "it has no classes\n")):
        result = place.brindle(*words)
        check(f"{words} fails", result.returncode == status and text in result.stderr and
              result.stderr.count("\n") == 1 and result.stdout == "", result.stderr)
    check("and writes nothing", place.servers() == [], place.servers())


def registration_files(place, options):
    servers = place.folder / "data/brindle/servers"
    servers.mkdir(parents=True)
    good = f"library={options.faulty}\nclass=Test.Faulty\n"
    create = 'o = createobject("Test.Faulty")\nprint "[" ; o.x ; "]"\n'
    for name, text, found in (
            ("as written", good, True),
            ("blanks, comments, other line ends", "# one\r\n\r\n library = " + options.faulty +
             "\r\n  class=Other \r\nclass =test.faulty\r\nwhatever=5\r\nno sense\r\n", True),
            ("no library", "class=Test.Faulty\n", False),
            ("no class", f"library={options.faulty}\n", False),
            ("empty", "", False),
            ("noise", "\0\xff=\n=\n===\nclass=\nlibrary=\n", False)):
        (servers / "a.server").write_text(text, encoding="latin-1")
        result = place.script(create)
        check(f"file: {name}", (result.stdout == "[]\n" and result.stderr == "") == found, result.stderr)
    (servers / "a.server").write_text("library=nowhere.so\nclass=Test.Faulty\n", encoding="utf-8")
    result = place.script(create)
    check("a library that is not there is named, from the file's folder", result.stderr ==
          f"The server library cannot be loaded: {servers}/nowhere.so: no such file\n", result.stderr)
    (servers / "a.txt").write_text(good, encoding="utf-8")
    (servers / "a.server").unlink()
    check("other endings do not count", "Invalid class string" in place.script(create).stderr)
    (servers / "a.txt").unlink()

    system = place.folder / "system/brindle/servers"
    system.mkdir(parents=True)
    (system / "s.server").write_text(good, encoding="utf-8")
    for dirs, found in ((f"{place.folder}/system", True), (f"/nowhere:{place.folder}/system", True),
                        (f"::{place.folder}/system:", True), ("system", False), ("/nowhere", False)):
        place.environment["XDG_DATA_DIRS"] = dirs
        check(f"system folders {dirs}", (place.script(create).stderr == "") == found)
    place.environment["XDG_DATA_DIRS"] = f"{place.folder}/system"
    (servers / "u.server").write_text("library=nowhere.so\nclass=Test.Faulty\n", encoding="utf-8")
    check("the user's come first", "nowhere.so" in place.script(create).stderr)
    (servers / "u.server").unlink()
    result = place.brindle("unregister", options.faulty)
    check("the system's are not the user's to remove", result.returncode == 1, result.stderr)


def faulty_servers(place, options):
    place.brindle("register", options.faulty)
    place.expect("what a server throws is shown, and the run goes on",
                 'o = createobject("Test.Faulty")\nx = o.Throw()\nx = o.Throw\no.Throw = 1\nx = o.ThrowMemory()\n'
                 'x = o.ThrowNumber()\nx = o.FailWithResult()\nx = o.End()\nprint "on"\n', ["on"],
                 ["The object failed: thrown across the border"] * 3 +
                 ["Not enough memory to complete this operation",
                  "The object failed with an exception of an unknown kind", "Unspecified error", "Unspecified error"])
    place.expect("a class that is refused",
                 'o = createobject("Test.Refused")\nprint o\no = createobject("Test.Nothing")\nprint o\n', ["0", "0"],
                 ["The licence has run out", "No such interface supported (Test.Nothing)"])


def file_system(place, _options):
    start = 'fs = createobject("Brindle.FileSystem")\n'
    (place.folder / "Data.txt").write_text("12345", encoding="utf-8")
    os.chmod(place.folder / "Data.txt", 0o640)
    os.utime(place.folder / "Data.txt", (1000000000, 1000000000))
    place.expect("looking", start + 'print fs.exists("data.TXT") ; fs.exists("nope") ; fs.exists("") ; fs.isfolder(".")\n'
                 'print fs.isfolder("data.txt") ; fs.size("Data.txt")\n'
                 'if fs.freespace(".") > 0 then print "room" endif\n', ["TrueFalseFalseTrue", "False5", "room"])
    place.expect("copying", start + 'print fs.copy("Data.txt", "copy.txt")\n', ["True"])
    status = os.stat(place.folder / "copy.txt")
    check("a copy has the same bytes, permissions and time",
          (place.folder / "copy.txt").read_text(encoding="utf-8") == "12345" and status.st_mode & 0o777 == 0o640 and
          status.st_mtime == 1000000000, status)
    (place.folder / "copy.txt").write_text("precious", encoding="utf-8")
    here = str(place.folder)
    place.expect("nothing is overwritten unasked",
                 start + 'x = fs.copy("Data.txt", "copy.txt")\nx = fs.move("Data.txt", "copy.txt")\n', [],
                 ['cannot copy "Data.txt" to "copy.txt": the target is there already',
                  'cannot move "Data.txt" to "copy.txt": the target is there already'])
    check("both are there still", (place.folder / "copy.txt").read_text(encoding="utf-8") == "precious" and
          (place.folder / "Data.txt").read_text(encoding="utf-8") == "12345")
    place.expect("a file is not copied onto itself", start + 'x = fs.copy("Data.txt", "./Data.txt", True)\n'
                 'x = fs.move("Data.txt", "data.TXT", True)\n', [],
                 ['cannot copy "Data.txt" to "./Data.txt": both are the same file',
                  'cannot move "Data.txt" to "Data.txt": both are the same file'])
    place.expect("overwriting when told", start + 'print fs.copy("Data.txt", "copy.txt", True)\n', ["True"])
    check("overwritten", (place.folder / "copy.txt").read_text(encoding="utf-8") == "12345")
    place.expect("folders", start + 'print fs.createfolder("box") ; fs.createfolder("box")\n'
                 'print fs.copy("Data.txt", "box") ; fs.move("copy.txt", "box\\moved.txt")\n'
                 'print fs.exists("BOX/data.txt") ; fs.exists("copy.txt")\n'
                 'x = fs.delete("box")\nx = fs.createfolder("a/b/c")\nx = fs.createfolder("Data.txt")\n'
                 'x = fs.copy("box", "box2")\n', ["TrueTrue", "TrueTrue", "TrueFalse"],
                 ['cannot delete "box": the folder is not empty',
                  'cannot create the folder "a/b/c": No such file or directory',
                  'cannot create the folder "Data.txt": File exists',
                  'cannot copy "box" to "box2": it is a folder'])
    check("what was in the folder is there", sorted(os.listdir(place.folder / "box")) == ["Data.txt", "moved.txt"])
    place.expect("a folder moves whole", start + 'print fs.move("box", "case")\nprint fs.exists("case/moved.txt")\n'
                 'print fs.delete("case/moved.txt") ; fs.delete("case/Data.txt") ; fs.delete("case")\n'
                 'print fs.exists("case")\n', ["True", "True", "TrueTrueTrue", "False"])
    os.symlink("Data.txt", place.folder / "link")
    os.mkdir(place.folder / "full")
    (place.folder / "full/x").touch()
    os.symlink("full", place.folder / "folderlink")
    place.expect("a link goes, not what it leads to",
                 start + 'print fs.delete("link") ; fs.delete("folderlink")\nprint fs.exists("Data.txt") ; fs.exists("full/x")\n',
                 ["TrueTrue", "TrueTrue"])
    os.mkfifo(place.folder / "pipe")
    place.expect("what is missing or no file is named", start +
                 'x = fs.copy("nope", "x")\nx = fs.move("nope", "x")\nx = fs.delete("nope")\nx = fs.size("nope")\n'
                 'x = fs.size("full")\nx = fs.delete("")\nx = fs.copy("pipe", "x")\nx = fs.copy("Data.txt", "no/where")\n',
                 [], ['cannot copy "nope" to "x": No such file or directory',
                      'cannot move "nope" to "x": No such file or directory',
                      'cannot delete "nope": No such file or directory',
                      'no size of "nope": No such file or directory', 'no size of "full": Is a directory',
                      "a path is empty or holds a zero character", 'cannot copy "pipe" to "x": it is no plain file',
                      'cannot copy "Data.txt" to "no/where": No such file or directory'])
    place.expect("wrong counts and accesses", start + 'x = fs.exists()\nx = fs.exists("a", "b")\nx = fs.copy("a")\n'
                 'x = fs.exists\nfs.exists = 1\n', [],
                 ["Invalid number of parameters"] * 3 + ["Member not found"] * 2)
    shared = pathlib.Path("/dev/shm")
    if shared.is_dir() and os.stat(shared).st_dev != os.stat(here).st_dev and os.access(shared, os.W_OK):
        with tempfile.TemporaryDirectory(dir=shared) as other:
            place.expect("to another file system", start + f'print fs.move("Data.txt", "{other}/there.txt")\n'
                         f'print fs.exists("Data.txt")\nprint fs.move("{other}/there.txt", "Data.txt")\n'
                         f'x = fs.move("full", "{other}/full")\n', ["True", "False", "True"],
                         [f'cannot move "full" to "{other}/full": only files can be moved to another file system'])
            check("the file is whole", (place.folder / "Data.txt").read_text(encoding="utf-8") == "12345")
            check("nothing stays behind", os.listdir(other) == [], os.listdir(other))
    else:
        print("skipped: a move between file systems (there is no second one)")
    rest = [name for name in os.listdir(place.folder) if name not in ("Data.txt", "data", "full", "pipe", "script.bas")]
    check("no unfinished file is left", rest == [], rest)


def full_disk(place, _options):
    """A copy that cannot be finished leaves nothing."""
    (place.folder / "large").write_bytes(b"x" * 200000)
    (place.folder / "target").write_text("old", encoding="utf-8")
    (place.folder / "script.bas").write_text('fs = createobject("Brindle.FileSystem")\n'
                                             'x = fs.copy("large", "target", True)\nx = fs.copy("large", "new")\n',
                                             encoding="utf-8")
    result = subprocess.run(["bash", "-c", f'ulimit -f 100; exec "{place.runner}" script.bas'], cwd=place.folder,
                            env=place.environment, capture_output=True, text=True, timeout=60, check=False)
    check("a file that reaches its limit is reported", result.stderr ==
          'cannot copy "large" to "target": File too large\ncannot copy "large" to "new": File too large\n',
          result.stderr)
    check("and leaves what was there", sorted(os.listdir(place.folder)) == ["large", "script.bas", "target"] and
          (place.folder / "target").read_text(encoding="utf-8") == "old", os.listdir(place.folder))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runner", required=True)
    parser.add_argument("--faulty", required=True)
    parser.add_argument("--no-classes", required=True)
    parser.add_argument("--no-server", required=True)
    options = parser.parse_args()
    for name in ("faulty", "no_classes", "no_server"):
        setattr(options, name, os.path.realpath(getattr(options, name)))
    for run in (registering, registration_files, faulty_servers, file_system, full_disk):
        with tempfile.TemporaryDirectory() as folder:
            run(Place(os.path.abspath(options.runner), os.path.realpath(folder)), options)
    print(f"{checks - len(failures)} passed, {len(failures)} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
