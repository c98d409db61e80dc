#!/usr/bin/env python3
"""Writes src/calls/blowfish_tables.inc: the cipher's initial values, the hexadecimal digits of pi's fraction.

Usage: generate_blowfish_tables.py > src/calls/blowfish_tables.inc

The 18 + 4 * 256 words are computed, not copied: Machin's formula in integers with guard bits.
"""

WORDS = 18 + 4 * 256
GUARD = 64


def arccot(x, one):
    """arccot(x) scaled by `one`."""
    term = one // x
    total = term
    divisor = 3
    sign = -1
    while term:
        term //= x * x
        total += sign * (term // divisor)
        sign = -sign
        divisor += 2
    return total


def main():
    bits = 32 * WORDS
    one = 1 << (bits + GUARD)
    pi = 4 * (4 * arccot(5, one) - arccot(239, one))
    fraction = (pi - 3 * one) >> GUARD
    print("// Made by tools/generate_blowfish_tables.py: the fraction of pi in words of 32 bits.")
    for word in range(WORDS):
        value = (fraction >> (bits - 32 * (word + 1))) & 0xFFFFFFFF
        last = word == WORDS - 1 or word % 8 == 7
        print(f"0x{value:08X}U,", end="\n" if last else " ")


if __name__ == "__main__":
    main()
