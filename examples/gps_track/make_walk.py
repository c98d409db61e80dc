#!/usr/bin/env python3
"""Writes walk.log, the receiver log that the gps_track example reads.

The log is made up: a walk of twelve minutes around a hill, as a handheld receiver would have sent it over its
serial line (NMEA 0183: one sentence a line, a two-digit checksum behind "*", CR LF at the end). It holds on purpose
what real logs hold and a reader must survive: comment lines, an empty line, a start without a fix, sentences the
reader does not know, empty fields, and lines damaged on the way: one digit changed, some characters lost, one line cut
off, one sentence without a checksum.

Nothing is random, so every run writes the same bytes:  python3 make_walk.py [FILE]   (default: walk.log beside it)
"""
import math
import sys
from pathlib import Path

EPOCHS = 145            # one every STEP seconds
STEP = 5
WITHOUT_FIX = 4         # the receiver needs these epochs to find its satellites
START = 9 * 3600 + 12 * 60 + 30
DATE = "170524"
LATITUDE, LONGITUDE = 46.61250, 8.02930      # the middle of the walk
METRES_PER_DEGREE = 111195.0
DIGIT_CHANGED, CUT_OFF, CHARACTERS_LOST, NO_CHECKSUM = 40, 77, 95, 110    # the epochs whose GGA line arrives damaged


def checksum(body):
    total = 0
    for character in body.encode("ascii"):
        total ^= character
    return total


def sentence(body):
    return f"${body}*{checksum(body):02X}"


def position(epoch):
    """Where the walker is: a bent loop of about 800 m, walked once, with a climb on its far side."""
    turn = 2 * math.pi * epoch / (EPOCHS - 1)
    radius = 120 + 25 * math.sin(3 * turn)
    north = radius * math.cos(turn)
    east = radius * math.sin(turn)
    latitude = LATITUDE + north / METRES_PER_DEGREE
    longitude = LONGITUDE + east / (METRES_PER_DEGREE * math.cos(math.radians(LATITUDE)))
    height = 1034 - 17.5 * math.cos(turn) + 1.5 * math.sin(7 * turn)
    return latitude, longitude, height


def packed(angle, degree_digits, letters):
    """Degrees and minutes as receivers write them: 4636.7500,N is 46 degrees and 36.75 minutes north."""
    minutes_total = round(abs(angle) * 60 * 10000)
    degrees, minutes = divmod(minutes_total, 60 * 10000)
    letter = letters[0] if angle >= 0 else letters[1]
    return f"{degrees:0{degree_digits}d}{minutes / 10000:07.4f},{letter}"


def clock(epoch):
    seconds = START + epoch * STEP
    return f"{seconds // 3600:02d}{seconds // 60 % 60:02d}{seconds % 60:02d}"


def motion(epoch):
    """Speed in knots and course, from the positions around the epoch."""
    before, after = position(max(epoch - 1, 0)), position(min(epoch + 1, EPOCHS - 1))
    north = (after[0] - before[0]) * METRES_PER_DEGREE
    east = (after[1] - before[1]) * METRES_PER_DEGREE * math.cos(math.radians(LATITUDE))
    seconds = STEP * (min(epoch + 1, EPOCHS - 1) - max(epoch - 1, 0))
    return math.hypot(north, east) / seconds * 3600 / 1852, math.degrees(math.atan2(east, north)) % 360


def satellites_in_view(epoch):
    """GSV: two sentences of four satellites, some of them without a signal (an empty last field)."""
    satellites = []
    for number in range(8):
        signal = (number * 7 + epoch) % 50
        satellites.append(f"{3 * number + 2:02d},{10 + 9 * number:02d},{(41 * number + epoch) % 360:03d},"
                          + (f"{signal:02d}" if signal > 9 else ""))
    for part in range(2):
        yield sentence(f"GPGSV,2,{part + 1},08," + ",".join(satellites[4 * part:4 * part + 4]))


def epoch_lines(epoch):
    time = clock(epoch)
    if epoch < WITHOUT_FIX:
        yield sentence(f"GPGGA,{time},,,,,0,00,,,M,,M,,")
        yield sentence(f"GPRMC,{time},V,,,,,,,{DATE},,")
    else:
        latitude, longitude, height = position(epoch)
        place = f"{packed(latitude, 2, 'NS')},{packed(longitude, 3, 'EW')}"
        speed, course = motion(epoch)
        fix = sentence(f"GPGGA,{time},{place},1,{6 + epoch % 4:02d},{1.1 + epoch % 5 / 10:.1f},{height:.1f},M,48.2,M,,")
        if epoch == DIGIT_CHANGED:
            fix = fix.replace(",1,", ",7,", 1)
        elif epoch == CUT_OFF:
            fix = fix[:len(fix) // 2]
        elif epoch == CHARACTERS_LOST:
            fix = fix[:20] + fix[23:]
        elif epoch == NO_CHECKSUM:
            fix = fix[:fix.index("*")]
        yield fix
        yield sentence(f"GPRMC,{time},A,{place},{speed:05.1f},{course:05.1f},{DATE},001.9,E")
    if epoch % 6 == 0:
        yield from satellites_in_view(epoch)
    if epoch % 24 == 0:
        yield sentence("PXYZ,2,battery,78")      # a maker's own sentence


def log_lines():
    yield "# Handheld receiver, walk around the hill"
    yield "# Made by make_walk.py"
    for epoch in range(EPOCHS):
        yield from epoch_lines(epoch)
    yield ""
    yield "# End of the walk"


def main():
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).with_name("walk.log")
    target.write_bytes("".join(line + "\r\n" for line in log_lines()).encode("ascii"))


if __name__ == "__main__":
    main()
