"""The programs in the order in which they are shown, and what Brindle is measured against.

Used by run.py, callgrind.py and footprint.py; figures only.
A ratio is Brindle's processor time divided by the other language's: below 1 Brindle is the faster one.
The aim is what the work on speed strives for, the gate is what must not be exceeded.
"""

from dataclasses import dataclass


@dataclass(frozen=True)
class Target:
    aim: float
    gate: float


# Against Lua 5.4.
PROGRAMS = {
    "loop": Target(0.9, 1.2),
    "nested": Target(0.8, 1.1),
    "sieve": Target(0.9, 1.2),
    "fib": Target(0.8, 1.2),
    "calls": Target(0.9, 1.2),
    "strings": Target(0.8, 1.2),
    "mandel": Target(1.0, 1.2),
    "matmul": Target(0.95, 1.2),
    "sort": Target(1.0, 1.3),
    "map": Target(1.0, 1.3),
    "lines": Target(0.6, 1.0),
    "dbf": Target(0.6, 1.0),
    "branch": Target(1.0, 1.2),
}
MEAN = Target(0.86, 1.0)

# What a mean of 0.86 against Lua comes to against these, roughly: aims without a gate.
OTHER_MEANS = {"python3": 0.5, "yabasic": 0.125}

# Gates of the footprint.
START_MILLISECONDS = 3.0
RESIDENT_MEBIBYTES = 8.0
ARRAY_ITEM_BYTES = 24.0


def mark(value, gate):
    """What stands behind a figure: a sign that its gate is exceeded, or as much blank."""
    return " !" if value > gate else "  "
