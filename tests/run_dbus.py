#!/usr/bin/env python3
"""Scripts that use objects on D-Bus, on a private bus that ends with the test.

Usage: run_dbus.py --runner BRINDLE --service BUS_SERVICE

The bus itself, services of the system that are installed, and a service made for this test answer the scripts.
Exit status 77 when the machine has no dbus-daemon.
"""

import argparse
import os
import pathlib
import pty
import shutil
import signal
import subprocess
import sys
import tempfile
import time

failures = []
checks = 0

SERVICE = 'o = createobject("dbus:session:test.Service:/test/object")\n'
BUS = 'b = createobject("dbus:session:org.freedesktop.DBus:/org/freedesktop/DBus")\n'


def check(name, condition, detail=""):
    global checks
    checks += 1
    if not condition:
        failures.append(name)
        print(f"FAIL {name}\n{detail}")


class PrivateBus:
    def __init__(self, runner, folder):
        self.runner = runner
        self.folder = pathlib.Path(folder)
        self.environment = dict(os.environ, HOME=folder, XDG_CONFIG_HOME=f"{folder}/config",
                                XDG_DATA_HOME=f"{folder}/data", XDG_RUNTIME_DIR=f"{folder}/run",
                                BRINDLE_DBUS_TIMEOUT="1")
        os.mkdir(f"{folder}/run", 0o700)
        self.daemon = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
             f"--address=unix:path={folder}/bus"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, env=self.environment)
        address = self.daemon.stdout.readline().strip()
        # The one private bus serves as both.
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = address
        self.children = []

    def start(self, *command):
        child = subprocess.Popen(command, stdout=subprocess.PIPE, text=True, env=self.environment)
        self.children.append(child)
        return child

    def end(self):
        for child in [*self.children, self.daemon]:
            child.kill()
            child.wait()

    def script(self, text):
        (self.folder / "script.bas").write_text(text, encoding="utf-8")
        return subprocess.run([self.runner, "--on-error=continue", "script.bas"], cwd=self.folder,
                              env=self.environment, capture_output=True, text=True, timeout=60, check=False)

    def expect(self, name, text, output, notices=()):
        result = self.script(text)
        check(name, (result.stdout, result.stderr, result.returncode) ==
              ("".join(line + "\n" for line in output), "".join(line + "\n" for line in notices),
               1 if notices else 0), f"{result.stdout}{result.stderr}exit {result.returncode}")


def the_bus_itself(bus):
    bus.expect("methods", BUS + 'n = b.ListNames()\nprint ubound("n") ; n[0]\nprint len(b.GetId())\n'
               'print b.NameHasOwner("org.freedesktop.DBus") ; b.namehasowner("no.such")\n',
               ["2org.freedesktop.DBus", "32", "TrueFalse"])
    bus.expect("properties", BUS + 'f = b.Interfaces\nprint f[0]\n', ["org.freedesktop.DBus.Monitoring"])
    bus.expect("either bus, one interface, any case",
               'b = createobject("DBUS:System:org.freedesktop.DBus:/org/freedesktop/DBus:org.freedesktop.DBus.Peer")\n'
               'call b.Ping()\nprint len(b.GetMachineId())\n'
               'b = createobject("dbus::org.freedesktop.DBus:/:org.freedesktop.DBus.Introspectable")\n'
               'print left(b.Introspect(), 9)\n', ["32", "<!DOCTYPE"])
    bus.expect("an error is shown with its text and its name", BUS + 'x = b.GetNameOwner("no.such")\nprint "on"\n',
               ["on"], ["D-Bus: Could not get owner of name 'no.such': no such name "
                        "(org.freedesktop.DBus.Error.NameHasNoOwner)"])
    bus.expect("a dictionary is refused", BUS + 'x = b.GetConnectionCredentials("org.freedesktop.DBus")\n', [],
               ['D-Bus: GetConnectionCredentials gives a result of the type "a{sv}", which scripts cannot take'])
    bus.expect("the number of arguments is checked", BUS + "x = b.GetId(1)\nx = b.NameHasOwner()\n", [],
               ["D-Bus: GetId takes 0 arguments, not 1", "D-Bus: NameHasOwner takes 1 arguments, not 0"])
    result = bus.script(BUS + "x = b.Nope()\nprint \"[\" ; b.Nope ; \"]\"\n")
    check("unknown members", result.stdout == "[]\n" and result.stderr.startswith("Field name does not exists"),
          result.stderr)
    bus.expect("identifiers that make no sense", "".join(f'x = createobject("{text}")\n' for text in (
        "dbus:", "dbus:session", "dbus:other:a.b:/c", "dbus:session:a.b", "dbus:session:a.b:c",
        "dbus:session:a b:/c", "dbus:session:a.b://", "dbus:session:a.b:/c:d")), [], [
            'D-Bus: "dbus:" names no service', 'D-Bus: "dbus:session" names no service',
            'D-Bus: "dbus:other:a.b:/c" names neither the session nor the system bus',
            'D-Bus: "dbus:session:a.b" names no object path', 'D-Bus: "dbus:session:a.b:c" names no object path',
            'D-Bus: "dbus:session:a b:/c" names no valid service',
            'D-Bus: "dbus:session:a.b://" names no valid object path',
            'D-Bus: "dbus:session:a.b:/c:d" names no valid interface'])
    bus.expect("services, interfaces and objects that are not there",
               'x = createobject("dbus:session:no.such:/a")\n'
               'x = createobject("dbus:session:org.freedesktop.DBus:/org/freedesktop/DBus:no.such")\nprint x\n', ["0"],
               ["D-Bus: The name no.such was not provided by any .service files "
                "(org.freedesktop.DBus.Error.ServiceUnknown)",
                "D-Bus: org.freedesktop.DBus has no interface no.such at /org/freedesktop/DBus"])


def services_of_the_system(bus):
    if pathlib.Path("/usr/share/dbus-1/services/ca.desrt.dconf.service").exists():
        writer = 'd = createobject("dbus:session:ca.desrt.dconf:/ca/desrt/dconf/Writer/user")\n'
        bus.expect("a service that the bus starts", writer + 'call d.Init()\nprint "done"\n', ["done"])
        bus.expect("an array of bytes is no argument", writer + 'x = d.Change("a")\n', [],
                   ['D-Bus: argument 1 of Change has the type "ay", which scripts cannot pass'])
    else:
        print("skipped: dconf-service is not installed")
    hostnamed = pathlib.Path("/lib/systemd/systemd-hostnamed")
    if hostnamed.exists():
        bus.start(str(hostnamed))
        wait_for(bus, "org.freedesktop.hostname1")
        host = 'h = createobject("dbus:system:org.freedesktop.hostname1:/org/freedesktop/hostname1")\n'
        bus.expect("properties of a service", host + "print h.KernelName\nprint left(h.Describe(), 1)\n",
                   [os.uname().sysname, "{"])
        result = bus.script(host + 'h.KernelName = "Other"\n')
        check("a property that cannot be written", result.stderr.startswith("D-Bus: ") and
              result.stderr.count("\n") == 1 and "KernelName" in result.stderr, result.stderr)
    else:
        print("skipped: systemd-hostnamed is not installed")


def wait_for(bus, name):
    for _ in range(100):
        if bus.script(BUS + f'print b.NameHasOwner("{name}")\n').stdout == "True\n":
            return
        time.sleep(0.05)
    check(f"{name} is on the bus", False)


def every_type(bus):
    bus.expect("numbers both ways", SERVICE +
               "print o.EchoY(255) ; \" \" ; o.EchoN(-32768) ; \" \" ; o.EchoQ(65535) ; \" \" ; o.EchoI(-5)\n"
               'print o.EchoU("4294967295") ; " " ; o.EchoX(-7) ; " " ; o.EchoT(7) ; " " ; o.EchoI(2.9)\n'
               "print o.EchoD(0.25) ; \" \" ; o.EchoD(-3) ; \" \" ; o.EchoD(\"1e3\") ; \" \" ; o.EchoI(\"1e3\")\n",
               ["255 -32768 65535 -5", "4294967295.000000 -7 7 2", "0.250000 -3.000000 1000.000000 1000"])
    bus.expect("64 bits keep every digit as text", SERVICE +
               'print o.EchoX("-9223372036854775808") ; " " ; o.EchoT("18446744073709551615")\n'
               'print o.EchoX("9007199254740991") ; " " ; o.EchoT("9007199254740993")\nw = o.Wide()\n'
               'print w[0] ; " " ; w[1] ; " " ; w[2] ; " " ; w[3]\n',
               ["-9223372036854775808 18446744073709551615", "9007199254740991.000000 9007199254740993",
                "-9223372036854775808 18446744073709551615 5000000000.000000 4294967295.000000"])
    calls = [("EchoY", "256"), ("EchoY", "-1"), ("EchoN", "32768"), ("EchoQ", "-1"), ("EchoU", "-1"),
             ("EchoI", '"2147483648"'), ("EchoU", '"4294967296"'), ("EchoX", '"9223372036854775808"'),
             ("EchoT", '"18446744073709551616"'), ("EchoT", '"-1"'), ("EchoT", '"1e30"')]
    bus.expect("a number that does not fit is refused",
               SERVICE + "".join(f"x = o.{name}({value})\n" for name, value in calls), [],
               [f"D-Bus: argument 1 of {name} does not fit into its type" for name, _ in calls])
    bus.expect("truth values", SERVICE + 'print o.EchoB(True) ; o.EchoB(False) ; o.EchoB(5) ; o.EchoB(0)\n'
               'print o.EchoB("true") ; o.EchoB("False") ; o.EchoB("1") ; o.EchoB("")\n',
               ["TrueFalseTrueFalse", "TrueFalseTrueFalse"])
    bus.expect("texts, signatures and paths", SERVICE +
               'print o.EchoS("Grüße 😀") ; "[" ; o.EchoS("") ; "]" ; o.EchoS(5) ; o.EchoG("a{sv}")\n'
               'p = o.EchoO("/test/object")\nprint p.EchoS("by path")\nq = p.EchoO(o)\nprint q.EchoI(7)\n',
               ["Grüße 😀[]5a{sv}", "by path", "7"])
    bus.expect("what is no path or signature", SERVICE + 'x = o.EchoO("no path")\nx = o.EchoO("")\nx = o.EchoG("(")\n',
               [], ["D-Bus: argument 1 of EchoO is no object path"] * 2 +
               ['D-Bus: argument 1 of EchoG cannot be passed as the type "g"'])
    bus.expect("variants", SERVICE + 'print o.EchoV(5) ; o.EchoV("text") ; o.EchoV(2.5)\np = o.EchoV(o)\n'
               'print p.EchoI(3)\nv = o.Variants()\nprint ubound("v") ; v[0] ; v[1] ; v[2]\n',
               ["5text2.500000", "3", "35text2.500000"])
    bus.expect("arrays and several results", SERVICE + 't = o.Texts()\nprint ubound("t") ; t[0] ; t[2]\n'
               'n = o.None()\nprint "[" ; n ; "]"\ns = o.Several()\nprint s[0] ; s[1] ; s[2]\n'
               'm = o.Modes\nprint m[0] ; m[1] ; m[2]\n', ["3onethree", "[]", "several7True", "123"])
    bus.expect("paths are objects", SERVICE + 'h = o.Here()\nprint h.EchoS("here")\np = o.Paths()\nq = p[0]\n'
               'print ubound("p") ; q.EchoS("there")\n', ["here", "2there"])
    bus.expect("properties", SERVICE + 'o.Label = "second"\nprint o.Label ; o.label\no.Level = 2.5\nprint o.Level\n'
               'o.Level = 3\nprint o.Level\no.Label = "first"\n', ["secondsecond", "2.500000", "3.000000"])


def what_is_refused(bus):
    bus.expect("structures", SERVICE + 'x = o.Structure()\nx = o.HiddenStructure()\nx = o.EchoStructure("(1,2)")\n'
               'x = o.EchoAs("a")\nprint "on"\n', ["on"],
               ['D-Bus: Structure gives a result of the type "(is)", which scripts cannot take',
                'D-Bus: the answer holds a value of the type "ris", which scripts cannot take',
                'D-Bus: argument 1 of EchoStructure has the type "(ii)", which scripts cannot pass',
                'D-Bus: argument 1 of EchoAs has the type "as", which scripts cannot pass'])
    bus.expect("an error of the service", SERVICE + 'call o.Refuse()\nprint "on"\n', ["on"],
               ["D-Bus: The door is locked (test.Error.Refused)"])
    bus.expect("methods are no properties", SERVICE + "x = o.Texts\no.Texts = 1\nx = o.Label()\n", [],
               ["D-Bus: test.Service has no property Texts at /test/object"] * 2 +
               ["D-Bus: test.Service has no method Label at /test/object"])
    result = bus.script(SERVICE + "o.Modes = 5\n")
    check("a property that cannot be written", result.stderr.count("\n") == 1 and result.stderr.startswith("D-Bus: "),
          result.stderr)
    result = bus.script(SERVICE + 'n = o.Nowhere()\nprint "got it"\nx = n.Member()\n')
    check("an object that is not there shows it when it is used",
          result.stdout == "got it\n" and result.stderr.startswith("D-Bus: ") and result.stderr.count("\n") == 1,
          result.stderr)


def what_vanishes(bus, service):
    started = time.monotonic()
    bus.expect("a call that is not answered ends", SERVICE + 'x = o.Silent()\nprint o.EchoS("on")\n', ["on"],
               ["D-Bus: the service did not answer in time"])
    check("in time", time.monotonic() - started < 10)
    result = bus.script(SERVICE + 'call o.Quit()\nx = o.EchoS("a")\nprint "[" ; o.Label ; "]"\no.Label = "x"\nprint "on"\n')
    lines = result.stderr.splitlines()
    check("a service that ends in the middle is shown each time", len(lines) == 4 and result.stdout == "[]\non\n" and
          all(line.startswith("D-Bus: ") for line in lines), result.stdout + result.stderr)
    service.wait(timeout=10)
    check("what was refused never reached the service", service.stdout.read() == "")

    (bus.folder / "gone.bas").write_text(BUS + 'print b.GetId() ; ask("go on")\nx = b.GetId()\nx = b.GetId()\n'
                                         'print "on"\n', encoding="utf-8")
    script = subprocess.Popen([bus.runner, "--on-error=continue", "gone.bas"], cwd=bus.folder, env=bus.environment,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    check("the script waits", read_up_to(script.stderr, "[y/n]"))  # so it is on the bus
    bus.daemon.kill()
    bus.daemon.wait()
    output, errors = script.communicate("y\n", timeout=60)
    lines = errors.strip().splitlines()
    check("a bus that ends is shown", output.endswith("on\n") and len(lines) == 2 and
          all("D-Bus: " in line for line in lines), output + errors)
    result = bus.script(BUS)
    check("no bus at all", result.stderr.startswith("D-Bus: ") and result.stderr.count("\n") == 1, result.stderr)


def what_is_stopped(bus, service):
    """A call that nobody answers for a minute ends with the run: at the limit of time, and when somebody interrupts."""
    environment = dict(bus.environment, BRINDLE_DBUS_TIMEOUT="60")
    program = SERVICE + 'print "calling"\nx = o.Silent()\nprint "behind"\n'
    (bus.folder / "wait.bas").write_text(program, encoding="utf-8")
    started = time.monotonic()
    result = subprocess.run([bus.runner, "--on-error=continue", "--max-seconds=0.5", "wait.bas"], cwd=bus.folder,
                            env=environment, capture_output=True, text=True, timeout=50, check=False)
    check("a call ends at the limit of time", result.returncode == 1 and result.stdout == "calling\n" and
          result.stderr.startswith("Limit of time reached\n") and "D-Bus" not in result.stderr and
          0.5 <= time.monotonic() - started < 50, result.stdout + result.stderr)

    # At the prompt, which needs a terminal to read from, an interruption asks for a stop.
    keyboard, terminal = pty.openpty()
    prompt = subprocess.Popen([bus.runner], cwd=bus.folder, env=dict(environment, TERM="xterm"), stdin=terminal,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    os.close(terminal)
    time.sleep(0.3)
    os.write(keyboard, (SERVICE + 'call o.Calling() : x = o.Silent() : print "behind"\n').encode())
    check("the prompt calls", service.stdout.readline() == "called\n")
    time.sleep(0.1)
    prompt.send_signal(signal.SIGINT)
    time.sleep(0.3)
    os.write(keyboard, b'print o.EchoS("on")\n')
    check("a call ends when it is interrupted", read_up_to(prompt.stdout, "on\n"))
    os.close(keyboard)  # the end of the input
    output, errors = prompt.communicate(timeout=50)
    check("and without a word of it", output == "" and "D-Bus" not in errors, output + errors)


def read_up_to(stream, text):
    seen = ""
    while text not in seen:
        character = stream.read(1)
        if not character:
            return False
        seen += character
    return True


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runner", required=True)
    parser.add_argument("--service", required=True)
    options = parser.parse_args()
    if shutil.which("dbus-daemon") is None:
        print("skipped: there is no dbus-daemon on this machine (package dbus)")
        return 77
    with tempfile.TemporaryDirectory() as folder:
        bus = PrivateBus(os.path.abspath(options.runner), os.path.realpath(folder))
        try:
            the_bus_itself(bus)
            services_of_the_system(bus)
            service = bus.start(os.path.abspath(options.service))
            check("the test's own service starts", service.stdout.readline() == "ready\n")
            every_type(bus)
            what_is_refused(bus)
            what_is_stopped(bus, service)
            what_vanishes(bus, service)
        finally:
            bus.end()
    print(f"{checks - len(failures)} passed, {len(failures)} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
