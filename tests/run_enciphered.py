#!/usr/bin/env python3
"""Runs every script as it is and enciphered, and checks "brindle encrypt" itself.

An enciphered script must do exactly what its plain text does: printed text,
error boxes and exit status are compared for every script of the examples and
of the script tests.  The command must refuse what would not come back, and
leave every file alone that it does not write.
"""

import argparse
import concurrent.futures
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from run_scripts import Expectations, TestFault, find_scripts

TIME_LIMIT = 60.0 if os.environ.get("BRINDLE_SLOW_TESTS") else 15.0



class Tally:
    def __init__(self):
        self.passed = self.failed = 0

    def check(self, name, problems):
        if problems:
            self.failed += 1
            print("FAIL " + name)
            for problem in problems:
                print("  " + problem)
        else:
            self.passed += 1


def run(command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, timeout=TIME_LIMIT, **options)


def encrypt(runner, source, target, **options):
    return run([runner, "encrypt", source, target], **options)


def shown(data):
    text = data.decode("utf-8", "backslashreplace")
    return repr(text if len(text) < 400 else text[:200] + " ... " + text[-200:])


def prepare(script, folder, is_test):
    """What stands beside the script, where it expects it."""
    if is_test:
        data, shared = script.with_suffix(".data"), script.parent / "include"
        if data.is_dir():
            shutil.copytree(data, folder)
        else:
            folder.mkdir()
        if shared.is_dir():
            shutil.copytree(shared, folder / "include", dirs_exist_ok=True)
    else:
        shutil.copytree(script.parent, folder)


def outcome(runner, script, options, given, is_test, enciphered, box):
    """Exit status, printed text, boxes and the files left behind, of the script or its enciphered form."""
    folder = Path(box) / "run"
    prepare(script, folder, is_test)
    place = folder / script.name
    if enciphered:
        place.unlink(missing_ok=True)
        made = encrypt(runner, script, place)
        if made.returncode != 0:
            return "cannot be enciphered: " + shown(made.stderr)
        if not place.read_bytes().startswith(b"encrypt\r\n"):
            return "the enciphered form does not begin with its word"
    else:
        shutil.copy(script, place)
    done = run([runner] + options + [script.name], cwd=folder, input=given)
    left = {path.relative_to(folder).as_posix(): path.read_bytes() if path.is_file() else None
            for path in sorted(folder.rglob("*")) if path != place}
    return done.returncode, done.stdout, done.stderr, left


def compare(runner, script, options, given, is_test, boxes=None):
    """The problems; `boxes` is the pattern of boxes whose quoted lines may differ from run to run."""
    outcomes = []
    for enciphered in (False, True):
        with tempfile.TemporaryDirectory(prefix="brindle-enciphered-") as box:
            try:
                outcomes.append(outcome(runner, script, options, given, is_test, enciphered, box))
            except subprocess.TimeoutExpired:
                return ["time limit of %g s exceeded" % TIME_LIMIT]
    plain, hidden = outcomes
    if isinstance(hidden, str):
        return [hidden]
    problems = []
    for what, before, after in zip(("exit status", "printed text", "boxes", "files"), plain, hidden):
        if what == "boxes" and boxes and all(boxes.fullmatch(side.decode("utf-8", "backslashreplace"))
                                             for side in (before, after)):
            continue
        if before != after:
            problems.append("%s differ: plain %s, enciphered %s" % (
                what, *(shown(side) if isinstance(side, bytes) else repr(side)[:400] for side in (before, after))))
    return problems


def compare_test(runner, script, name):
    data = script.read_bytes()
    if b"\0" in data or name.startswith("enciphered/"):
        return None  # these are refused: see check_refusals
    try:
        expectations = Expectations(script)
    except TestFault:
        return None  # the script driver reports it
    given = "".join(line + "\n" for line in expectations.input_lines).encode()
    # How deep the stack goes, and so where error 50 strikes, differs from run to run.
    return compare(runner, script, expectations.options, given, True, expectations.expected_stderr()[1])


def check_scripts(tally, runner, tests, examples, jobs):
    scripts = [(script, script.relative_to(tests).as_posix()) for script in find_scripts(tests, None)]
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for (_, name), problems in zip(scripts, pool.map(lambda pair: compare_test(runner, *pair), scripts)):
            if problems is not None:
                tally.check(name, problems)
    for script in sorted(examples.rglob("*.bas")):
        tally.check(script.relative_to(examples).as_posix(),
                    compare(runner, script, ["--ui=console"], b"", False))
    if not scripts:
        tally.check("the script tests", ["none found"])


def check_refusals(tally, runner):
    """Every refusal: status 1, one line that says why, and no file changed, made or left behind."""
    script = b'print "hi"\n'

    def refused(name, words, reason, prepare_files):
        with tempfile.TemporaryDirectory(prefix="brindle-encrypt-") as box:
            folder = Path(box)
            (folder / "in.bas").write_bytes(script)
            prepare_files(folder)
            before = snapshot(folder)
            done = run([runner, "encrypt"] + words, cwd=folder)
            problems = []
            if done.returncode != 1:
                problems.append("exit status %d" % done.returncode)
            if done.stdout:
                problems.append("printed " + shown(done.stdout))
            message = done.stderr.decode("utf-8", "backslashreplace")
            if reason not in message or message.count("\n") != 1 or not message.startswith("brindle encrypt: "):
                problems.append("message " + repr(message))
            if snapshot(folder) != before:
                problems.append("files changed: %r" % sorted(snapshot(folder)))
            tally.check("encrypt refuses " + name, problems)

    def nothing(folder):
        pass

    def zero(folder):
        (folder / "in.bas").write_bytes(b"print 1\n\0print 2\n")
        (folder / "out.bas").write_bytes(b"older")

    def folders(folder):
        (folder / "dir").mkdir()
        (folder / "dir" / "kept").write_bytes(b"x")

    def enciphered(folder):
        made = encrypt(runner, "in.bas", "done.bas", cwd=folder)
        assert made.returncode == 0, made.stderr
        (folder / "blanks.bas").write_bytes(b"\r\n\n \t" + (folder / "done.bas").read_bytes())
        (folder / "capitals.bas").write_bytes(b"ENCRYPT" + (folder / "done.bas").read_bytes()[7:])
        (folder / "bare.bas").write_bytes(b"encrypt")

    def links(folder):
        os.symlink("in.bas", folder / "link.bas")
        os.link(folder / "in.bas", folder / "hard.bas")
        (folder / "sub").mkdir()
        os.symlink("..", folder / "sub" / "up")

    refused("a missing script", ["none.bas", "out.bas"], "none.bas", nothing)
    refused("an empty name", ["", "out.bas"], "", nothing)
    refused("a folder as the script", ["dir", "out.bas"], "folder", folders)
    refused("a folder as the result", ["in.bas", "dir"], "dir", folders)
    refused("a result in a missing folder", ["in.bas", "none/out.bas"], "none/out.bas", nothing)
    refused("a script with a zero byte", ["in.bas", "out.bas"], "zero byte", zero)
    refused("a script that ends with a zero byte", ["in.bas", "out.bas"], "zero byte",
            lambda folder: (folder / "in.bas").write_bytes(script + b"\0"))
    refused("the script as its own result", ["in.bas", "in.bas"], "same file", nothing)
    refused("the script by another spelling", ["in.bas", "./in.bas"], "same file", nothing)
    refused("a link to the script", ["in.bas", "link.bas"], "same file", links)
    refused("the script through a link", ["link.bas", "in.bas"], "same file", links)
    refused("a hard link to the script", ["in.bas", "hard.bas"], "same file", links)
    refused("the script through a linked folder", ["in.bas", "sub/up/in.bas"], "same file", links)
    for name in ("done.bas", "blanks.bas", "capitals.bas", "bare.bas"):
        refused("an enciphered script (%s)" % name, [name, "out.bas"], "enciphered", enciphered)
    if os.geteuid() != 0:  # the superuser may write anywhere
        refused("a folder that cannot be written", ["in.bas", "dir/out.bas"], "dir/out.bas",
                lambda folder: (folders(folder), (folder / "dir").chmod(0o500)))


def check_pipe(tally, runner):
    """A result that is no file: whether it is written or refused, it is not replaced by one."""
    with tempfile.TemporaryDirectory(prefix="brindle-encrypt-") as box:
        folder = Path(box)
        (folder / "in.bas").write_bytes(b'print "hi"\n')
        os.mkfifo(folder / "pipe")
        reader = os.open(folder / "pipe", os.O_RDONLY | os.O_NONBLOCK)
        done = encrypt(runner, "in.bas", "pipe", cwd=folder)
        came = os.read(reader, 65536) if done.returncode == 0 else b""
        os.close(reader)
        problems = []
        if not (folder / "pipe").is_fifo():
            problems.append("the pipe was replaced")
        if done.returncode == 0 and not came.startswith(b"encrypt"):
            problems.append("status 0, but nothing came through the pipe")
        if done.returncode not in (0, 1):
            problems.append("exit status %d" % done.returncode)
        tally.check("encrypt does not replace a pipe", problems)


def snapshot(folder):
    return {path.relative_to(folder).as_posix():
            (os.readlink(path) if path.is_symlink() else path.read_bytes() if path.is_file() else None, path.lstat().st_ino)
            for path in folder.rglob("*")}


def check_usage(tally, runner):
    with tempfile.TemporaryDirectory(prefix="brindle-encrypt-") as box:
        folder = Path(box)
        (folder / "A").write_bytes(b'print "hi"\n')
        for words in ([], ["A"], ["A", "B", "C"], ["A", "B", "C", "D"]):
            done = run([runner, "encrypt"] + words, cwd=folder)
            problems = []
            if done.returncode != 2 or b"encrypt" not in done.stderr or done.stdout:
                problems.append("exit status %d, %s" % (done.returncode, shown(done.stdout + done.stderr)))
            tally.check("encrypt with %d words" % len(words), problems)
        done = run([runner, "decrypt", "A", "B"], cwd=folder)
        tally.check("there is no decrypt", [] if done.returncode == 2 and not done.stdout else
                    ["exit status %d, %s" % (done.returncode, shown(done.stdout + done.stderr))])
        tally.check("usage writes nothing", [] if set(snapshot(folder)) == {"A"} else [repr(sorted(snapshot(folder)))])


def check_results(tally, runner):
    """What is written, for texts of every length and beside other files."""
    with tempfile.TemporaryDirectory(prefix="brindle-encrypt-") as box:
        folder = Path(box)
        source, target = folder / "in.bas", folder / "out.bas"
        problems = []
        for length in range(0, 40):
            text = 'print "' + "x" * length + '"'
            source.write_text(text)
            target.write_bytes(b"an older and longer file\n" * 1000)
            made = encrypt(runner, source, target)
            done = run([runner, "--ui=console", target], input=b"")
            if made.returncode or made.stdout or made.stderr or done.stdout.decode() != "x" * length + "\n" or done.returncode:
                problems.append("%d characters: %s %s" % (len(text), shown(made.stderr), shown(done.stdout + done.stderr)))
            words = target.read_text().split(None, 1)
            numbers = [int(number) for number in words[1].replace(",", " ").split()]
            if words[0] != "encrypt" or len(numbers) != (len(text) + 7) // 8 * 8 or not all(0 <= n <= 255 for n in numbers):
                problems.append("%d characters: malformed result" % len(text))
        tally.check("encrypt writes every length", problems)

        problems = []
        for name, data in (("empty", b""), ("only a line end", b"\n"), ("every byte but zero", b"# " + bytes(range(1, 256)) + b"\n")):
            source.write_bytes(data)
            if encrypt(runner, source, target).returncode != 0:
                problems.append(name + " was refused")
                continue
            plain, hidden = (run([runner, "--ui=console", "--on-error=continue", path], input=b"") for path in (source, target))
            if (plain.returncode, plain.stdout, plain.stderr) != (hidden.returncode, hidden.stdout, hidden.stderr):
                problems.append("%s: plain %s, enciphered %s" % (name, shown(plain.stderr), shown(hidden.stderr)))
        tally.check("encrypt takes odd scripts", problems)

        source.write_bytes(b'print "Folder"\n')
        (folder / "deep er").mkdir()
        made = run([runner, "encrypt", "in.bas", "deep er/Ausgabe ü.bas"], cwd=folder)
        done = run([runner, "--ui=console", folder / "deep er" / "Ausgabe ü.bas"], input=b"")
        tally.check("encrypt takes names with blanks and letters",
                    [] if made.returncode == 0 and done.stdout == b"Folder\n" else [shown(made.stderr + done.stderr)])
        os.symlink(folder / "elsewhere.bas", folder / "link.bas")
        (folder / "elsewhere.bas").write_bytes(b"older")
        made = encrypt(runner, source, folder / "link.bas")
        done = run([runner, "--ui=console", folder / "link.bas"], input=b"")
        tally.check("encrypt may write through a link",
                    [] if made.returncode == 0 and done.stdout == b"Folder\n" else [shown(made.stderr + done.stderr)])
        tally.check("encrypt leaves the script alone", [] if source.read_bytes() == b'print "Folder"\n' else ["changed"])
        left = sorted(set(snapshot(folder)) - {"in.bas", "out.bas", "deep er", "deep er/Ausgabe ü.bas", "link.bas", "elsewhere.bas"})
        tally.check("encrypt leaves nothing behind", ["left: %r" % left] if left else [])

        source.write_bytes(b'# encrypt\nencrypted = 1\nprint encrypted\n')
        made = encrypt(runner, source, target)
        tally.check("a script that only looks enciphered is taken", [] if made.returncode == 0 else [shown(made.stderr)])
        source.write_bytes(b'encrypted = 1\nprint encrypted\n')
        made = encrypt(runner, source, target)
        tally.check("a variable that begins like the word is taken", [] if made.returncode == 0 else [shown(made.stderr)])


def main():
    parser = argparse.ArgumentParser(description="Runs scripts plain and enciphered and compares.")
    parser.add_argument("--runner", required=True, type=Path, help="the brindle runner")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 2)
    parser.add_argument("tests", type=Path, help="the folder of the script tests")
    parser.add_argument("examples", type=Path, help="the folder of the examples")
    arguments = parser.parse_args()
    runner = arguments.runner.resolve()
    if not os.access(runner, os.X_OK) or not arguments.tests.is_dir() or not arguments.examples.is_dir():
        parser.error("no such runner or folder")

    tally = Tally()
    check_usage(tally, runner)
    check_refusals(tally, runner)
    check_pipe(tally, runner)
    check_results(tally, runner)
    check_scripts(tally, runner, arguments.tests.resolve(), arguments.examples.resolve(), arguments.jobs)
    print("%d passed, %d failed" % (tally.passed, tally.failed))
    return 1 if tally.failed else 0


if __name__ == "__main__":
    sys.exit(main())
