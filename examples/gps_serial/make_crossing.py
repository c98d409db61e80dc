#!/usr/bin/env python3
"""Writes crossing.log, what the receiver of the gps_serial example's own test sends.

The log is made up: a boat that crosses the 180th meridian south of the equator around midnight, one fix a second, RMC
before GGA as many receivers send them. It holds on purpose what a serial line brings and a reader must survive: no fix
at the start and under a bridge, a line damaged on the way, one cut off, one without a checksum, bytes that are no text,
sentences that the reader does not know, and empty fields.

Nothing is random, so every run writes the same bytes:  python3 make_crossing.py [FILE]   (default: crossing.log)
"""
import sys
from pathlib import Path

EPOCHS = 50
MIDNIGHT = 20                      # the epoch that is 00:00:00
DAYS = ("311299", "010100")        # before and after it
NO_FIX = {0, 1, 2, 30, 31}
DAMAGED, CUT_OFF, NO_CHECKSUM, NOISE, NO_HEIGHT = 8, 13, 27, 36, 40
START_LATITUDE = -16 * 60 - 59.5   # in minutes
START_LONGITUDE = 179 * 60 + 59.9


def sentence(body):
    total = 0
    for byte in body.encode("ascii"):
        total ^= byte
    return f"${body}*{total:02X}".encode("ascii")


def packed(minutes, digits, letters):
    letter = letters[0] if minutes >= 0 else letters[1]
    tenths = round(abs(minutes) * 10000)
    degrees, rest = divmod(tenths, 60 * 10000)
    return f"{degrees:0{digits}d}{rest / 10000:07.4f},{letter}"


def place(epoch):
    latitude = START_LATITUDE + 0.0021 * epoch
    longitude = START_LONGITUDE + 0.0047 * epoch
    if longitude > 180 * 60:
        longitude -= 360 * 60
    return packed(latitude, 2, "NS") + "," + packed(longitude, 3, "EW")


def epoch_lines(epoch):
    seconds = (epoch - MIDNIGHT) % 86400
    time = f"{seconds // 3600:02d}{seconds // 60 % 60:02d}{seconds % 60:02d}.00"
    day = DAYS[epoch >= MIDNIGHT]
    if epoch in NO_FIX:
        yield sentence(f"GNRMC,{time},V,,,,,,,{day},,,N")
        yield sentence(f"GNGGA,{time},,,,,0,00,99.9,,M,,M,,")
        return
    # One receiver in the middle of the night: the day of the first second is told a second late.
    if epoch != MIDNIGHT:
        yield sentence(f"GNRMC,{time},A,{place(epoch)},016.9,076.1,{day},,,A")
    height = "" if epoch == NO_HEIGHT else f"{2.5 - epoch % 7 * 0.8:.1f}"
    fix = sentence(f"GNGGA,{time},{place(epoch)},1,{5 + epoch % 6:02d},1.4,{height},M,52.1,M,,")
    if epoch == DAMAGED:
        fix = fix.replace(b",S,", b",N,")
    elif epoch == CUT_OFF:
        fix = fix[:30]
    elif epoch == NO_CHECKSUM:
        fix = fix[:fix.index(b"*")]
    yield fix
    if epoch % 10 == 0:
        yield sentence("GNGSA,A,3,03,06,11,14,19,22,,,,,,,2.1,1.4,1.6")
        yield sentence("PXYZ,1,battery,64")
    if epoch == NOISE:
        yield b"\xff\xfe\x80$G\x07\x1b~"


def log_bytes():
    return b"".join(line + b"\r\n" for epoch in range(EPOCHS) for line in epoch_lines(epoch))


def main():
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).with_name("crossing.log")
    target.write_bytes(log_bytes())


if __name__ == "__main__":
    main()
