#!/usr/bin/env python3
"""Debian packages: what lintian says of them, and whether they work where nothing else was ever installed.

Usage: check_debian.py --packages FOLDER

The clean root is made by debootstrap from the mirror that this machine's apt uses, which takes some minutes; without
debootstrap, or without being root, that part is left out, and the driver says so.
"""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import checks
from checks import check


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


def contents(package):
    return [line.split(None, 5)[5].removeprefix(".") for line in run(["dpkg-deb", "-c", str(package)]).stdout.splitlines()]


def check_contents(packages):
    wanted = {
        "libbrindle1": ("libbrindle.so.1", "brindle/libbrindle-filesystem.so", "servers/filesystem.server"),
        "libbrindle-dev": ("include/brindle/brindle.h", "pkgconfig/brindle.pc", "cmake/brindle/brindleConfig.cmake"),
        "brindle": ("/usr/bin/brindle", "man1/brindle.1", "bash-completion/completions/brindle"),
        "brindle-qt": ("libbrindle-qt.so",),
    }
    check("there are four packages", sorted(packages) == sorted(wanted), str(sorted(packages)))
    for name, parts in wanted.items():
        files = contents(packages[name]) if name in packages else []
        for part in parts:
            check("%s holds %s" % (name, part), any(part in file for file in files), "\n".join(files))
    everything = [file for package in packages.values() for file in contents(package)
                  if not file.endswith("/") and " -> " not in file]
    check("no file is in two packages", len(everything) == len(set(everything)),
          "\n".join(sorted({file for file in everything if everything.count(file) > 1})))


def check_lintian(packages):
    if not shutil.which("lintian"):
        print("lintian is not there: the packages are not judged")
        return
    for name, package in packages.items():
        # Root runs it here; what it says does not depend on that.
        done = run(["lintian", "--allow-root", "--fail-on", "error", str(package)])
        check("lintian finds no error in " + name, done.returncode == 0, done.stdout + done.stderr)


def apt_sources():
    """The first archive of this machine's apt: site, suite."""
    for line in run(["apt-get", "indextargets", "--format", "$(SITE) $(RELEASE) $(COMPONENT)"]).stdout.splitlines():
        site, _, rest = line.partition(" ")
        suite, _, component = rest.partition(" ")
        if component == "main" and "-" not in suite:
            return site, suite
    return None


SCRIPT = """fs = createobject("Brindle.FileSystem")
print fs.exists("/usr/bin/brindle")
print int(6 * 7)
"""


def check_clean_root(packages):
    if os.geteuid() != 0 or not shutil.which("debootstrap"):
        print("skipped: a clean root needs debootstrap and root")
        return
    source = apt_sources()
    if source is None:
        print("skipped: apt knows no archive for a clean root")
        return
    site, suite = source
    with tempfile.TemporaryDirectory(prefix="brindle-root-") as box:
        root = Path(box) / "root"
        made = run(["debootstrap", "--variant=minbase", suite, str(root), site])
        check("the clean root is made", made.returncode == 0, made.stdout[-3000:] + made.stderr[-1000:])
        if made.returncode != 0:
            return
        for configuration in ("apt.conf", "apt.conf.d"):
            place = Path("/etc/apt") / configuration
            if place.is_file():
                shutil.copy(place, root / "etc/apt" / configuration)
            elif place.is_dir():
                shutil.copytree(place, root / "etc/apt" / configuration, dirs_exist_ok=True)
        for package in packages.values():
            shutil.copy(package, root / "tmp")
        (root / "tmp/try.bas").write_text(SCRIPT, encoding="utf-8")

        def inside(*command):
            return run(["chroot", str(root), "/usr/bin/env", "-i", "PATH=/usr/sbin:/usr/bin:/sbin:/bin",
                        "DEBIAN_FRONTEND=noninteractive", "LC_ALL=C.UTF-8", *command])

        def install(*names):
            files = ["/tmp/" + packages[name].name for name in names]
            done = inside("apt-get", "install", "-y", "--no-install-recommends", *files)
            check("%s can be installed" % " and ".join(names), done.returncode == 0,
                  done.stdout[-3000:] + done.stderr[-3000:])

        inside("apt-get", "update")
        install("libbrindle1", "brindle")
        done = inside("brindle", "/tmp/try.bas")
        check("a script runs, and finds the class that ships",
              (done.returncode, done.stdout, done.stderr) == (0, "True\n42\n", ""), done.stdout + done.stderr)
        done = inside("brindle", "--version")
        check("the runner tells its version", done.stdout.startswith("brindle 0.") and "window system: none" in done.stdout,
              done.stdout + done.stderr)
        install("brindle-qt")
        (root / "tmp/window.bas").write_text("x = 1\n", encoding="utf-8")
        done = inside("env", "QT_QPA_PLATFORM=offscreen", "XDG_RUNTIME_DIR=/tmp", "brindle", "--ui=window",
                      "/tmp/window.bas")
        check("windows can be shown", done.returncode == 0, done.stderr)
        done = inside("dpkg", "--purge", "brindle", "brindle-qt", "libbrindle1")
        check("everything can be removed", done.returncode == 0 and not (root / "usr/share/brindle").exists(),
              done.stdout + done.stderr)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--packages", required=True, type=Path)
    options = parser.parse_args()
    packages = {path.name.partition("_")[0]: path.resolve() for path in sorted(options.packages.glob("*.deb"))}
    check_contents(packages)
    check_lintian(packages)
    if not checks.failed:
        check_clean_root(packages)
    return checks.status()


if __name__ == "__main__":
    sys.exit(main())
