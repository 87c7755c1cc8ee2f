#!/usr/bin/env python3
"""Finds where the commands of a printer's stream begin and end.

Usage: walker.py escpos|star FILE...
       walker.py --count escpos|star FILE...

Prints a line for each piece of the stream: offset, length, and the command's name, "text" for a run
of bytes that print, or "unknown". --count prints how often each command occurs in all files.

It is an opinion of its own: its tables were written from the manuals (Epson's ESC/POS application
programming guide, Star's "Line Mode Command Specifications" and "StarPRNT Command Specifications"),
not taken from drivers/commandsets, and it shares no code with the library. Where the two differ one
of them is wrong. So nothing here may ever be made from the library's tables, nor the other way.

It knows no meanings, only lengths. A command is a few bytes that introduce it and a tail:

    a number        so many bytes
    a function      gets the stream and the offset behind the introducer, gives the offset of the end

The longest introducer that fits counts.
"""

import collections
import random
import sys


def word(data, at):
    """Two bytes, the low one first."""
    return data[at] + 256 * data[at + 1]


def until(terminator):
    """Data up to a byte that ends it."""
    return lambda data, at: data.index(terminator, at) + 1


def counted(before, count):
    """So many operands, then as many bytes as `count` finds in them."""
    return lambda data, at: at + before + count(data, at)


def first(choices, otherwise):
    """The tail depends on the first operand, which belongs to it."""
    return lambda data, at: end_of(data, at + 1, choices.get(data[at], otherwise))


def end_of(data, at, tail):
    return tail(data, at) if callable(tail) else at + tail


# A family of functions that carry their length: a letter, then pL pH and so many bytes.
LENGTH_WORD = counted(3, lambda data, at: word(data, at + 1))
# The same with a length of four bytes.
LENGTH_DOUBLE = counted(5, lambda data, at: word(data, at + 1) + 65536 * word(data, at + 3))


def columns_of_dots(data, at):
    """ESC * m nL nH: a column has one byte in the modes of 8 dots, three in those of 24."""
    return at + 3 + word(data, at + 1) * (3 if data[at] in (32, 33) else 1)


def characters_defined(data, at):
    """ESC & y c1 c2, and for each character its width x and x * y bytes."""
    height, low, high = data[at], data[at + 1], data[at + 2]
    at += 3
    for _ in range(low, high + 1):
        at += 1 + data[at] * height
    return at


def tab_stops(data, at):
    """ESC D: columns up to NUL; one that isn't greater than the one before is no part of it any more."""
    last = 0
    while data[at] > last:
        last = data[at]
        at += 1
    return at + 1 if data[at] == 0 else at


def italics(data, at):
    """ESC 4: ESC/P has it without an operand, Custom's printers with 0 or 1."""
    return at + 1 if data[at] in (0, 1) else at


def escpos_barcode(data, at):
    """GS k m: up to 6 the data ends with NUL, from 65 to 79 its length comes first."""
    if data[at] <= 6:
        return data.index(0, at + 1) + 1
    return at + 2 + data[at + 1] if 65 <= data[at] <= 79 else at + 1


def bytes_thrown_away(data, at):
    """ESC * r N: a number in digits, a NUL, and so many bytes."""
    end = data.index(0, at)
    digits = data[at:end]
    return end + 1 + int(digits or b'0') if (digits or b'0').isdigit() and len(digits) <= 4 else at


ESC, FS, GS, RS, DLE = b'\x1b', b'\x1c', b'\x1d', b'\x1e', b'\x10'

ESCPOS = {
    b'\t': 0, b'\n': 0, b'\x0c': 0, b'\r': 0, b'\x18': 0,
    DLE + b'\x04': first({7: 1, 8: 1, 18: 1}, 0),
    DLE + b'\x05': 1,
    DLE + b'\x14': first({1: 2, 2: 2, 3: 5, 7: 1, 8: 7}, 0),
    ESC + b'\x0c': 0, ESC + b' ': 1, ESC + b'!': 1, ESC + b'$': 2, ESC + b'%': 1,
    ESC + b'&': characters_defined, ESC + b'(': LENGTH_WORD, ESC + b'*': columns_of_dots,
    ESC + b'-': 1, ESC + b'2': 0, ESC + b'3': 1, ESC + b'4': italics, ESC + b'5': 0, ESC + b'=': 1, ESC + b'?': 1,
    ESC + b'@': 0, ESC + b'B': 2, ESC + b'D': tab_stops, ESC + b'E': 1, ESC + b'G': 1, ESC + b'J': 1,
    ESC + b'K': 1, ESC + b'L': 0, ESC + b'M': 1, ESC + b'R': 1, ESC + b'S': 0, ESC + b'T': 1, ESC + b'V': 1,
    ESC + b'W': 8, ESC + b'\\': 2, ESC + b'a': 1, ESC + b'c3': 1, ESC + b'c4': 1, ESC + b'c5': 1,
    ESC + b'd': 1, ESC + b'e': 1, ESC + b'i': 0, ESC + b'm': 0, ESC + b'p': 3, ESC + b'r': 1, ESC + b't': 1,
    ESC + b'u': 1, ESC + b'v': 0, ESC + b'{': 1,
    FS + b'!': 1, FS + b'&': 0, FS + b'(': LENGTH_WORD, FS + b'-': 1, FS + b'.': 0, FS + b'C': 1,
    FS + b'S': 2, FS + b'W': 1, FS + b'p': 2,
    GS + b'!': 1, GS + b'$': 2, GS + b'(': LENGTH_WORD,
    GS + b'*': counted(2, lambda data, at: 8 * data[at] * data[at + 1]),
    GS + b'/': 1, GS + b'8': LENGTH_DOUBLE, GS + b':': 0, GS + b'B': 1, GS + b'E': 1, GS + b'H': 1,
    GS + b'I': 1, GS + b'L': 2, GS + b'P': 2, GS + b'T': 1,
    GS + b'V': first({mode: 1 for mode in (65, 66, 97, 98, 103, 104)}, 0),
    GS + b'W': 2, GS + b'\\': 2, GS + b'^': 3, GS + b'a': 1, GS + b'b': 1, GS + b'f': 1, GS + b'h': 1,
    GS + b'k': escpos_barcode, GS + b'r': 1,
    GS + b'v0': counted(5, lambda data, at: word(data, at + 1) * word(data, at + 3)),
    GS + b'w': 1,
}

# Commands of the raster mode have numbers in digits, up to a NUL.
STAR_RASTER = {ESC + b'*r' + letters: until(0) for letters in
               (b'D', b'E', b'F', b'K', b'P', b'Q', b'T', b'V', b'Y', b'ml', b'mr')}

STAR = {
    b'\x05': 0, b'\x07': 0, b'\t': 0, b'\n': 0, b'\x0b': 0, b'\x0c': 0, b'\r': 0, b'\x0e': 0, b'\x0f': 0,
    b'\x12': 0, b'\x14': 0, b'\x18': 0, b'\x19': 0, b'\x1a': 0, b'\x1c': 0, b'\x04': 0,
    ESC + b'\x06\x01': 0, ESC + b'\x07': 2, ESC + b'\x0c': 1, ESC + b'\x0e': 0, ESC + b'\x14': 0,
    ESC + b' ': 1, ESC + b'$': 1, ESC + b'-': 1, ESC + b'0': 0, ESC + b'1': 0, ESC + b'2': 0, ESC + b'3': 1,
    ESC + b'4': 0, ESC + b'5': 0, ESC + b'A': 1, ESC + b'@': 0, ESC + b'B': tab_stops, ESC + b'C': first({0: 1}, 0),
    ESC + b'D': tab_stops, ESC + b'E': 0, ESC + b'F': 0, ESC + b'I': 1, ESC + b'J': 1,
    ESC + b'K': counted(2, word), ESC + b'L': counted(2, word), ESC + b'M': 0, ESC + b'P': 0, ESC + b':': 0,
    ESC + b'Q': 1, ESC + b'R': 1, ESC + b'W': 1, ESC + b'X': counted(2, lambda data, at: 3 * word(data, at)),
    ESC + b'_': 1, ESC + b'a': 1, ESC + b'b': until(0x1e), ESC + b'd': 1, ESC + b'h': 1, ESC + b'i': 2,
    ESC + b'k': counted(2, lambda data, at: 24 * word(data, at)), ESC + b'l': 1, ESC + b's': 2, ESC + b'z': 1,
    ESC + RS + b'A': 1, ESC + RS + b'C': 1, ESC + RS + b'F': 1, ESC + RS + b'a': 1,
    ESC + RS + b'd': 1, ESC + RS + b'r': 1,
    ESC + GS + b'\x03': 3, ESC + GS + b'A': 2, ESC + GS + b'R': 2, ESC + GS + b'a': 1, ESC + GS + b't': 1,
    ESC + GS + b'P0': 0, ESC + GS + b'P1': 0, ESC + GS + b'P3': 8, ESC + GS + b'P4': 2, ESC + GS + b'P5': 2,
    ESC + GS + b'P6': 0, ESC + GS + b'P7': 0, ESC + GS + b'P8': 0,
    ESC + GS + b'S': counted(6, lambda data, at: word(data, at + 1) * word(data, at + 3)),
    ESC + GS + b'xS0': 3, ESC + GS + b'xS1': 1, ESC + GS + b'xS2': 1, ESC + GS + b'xS3': 1,
    ESC + GS + b'xD': counted(2, word), ESC + GS + b'xP': 0, ESC + GS + b'xI': 0,
    ESC + GS + b'yS0': 1, ESC + GS + b'yS1': 1, ESC + GS + b'yS2': 1,
    ESC + GS + b'yD1': counted(3, lambda data, at: word(data, at + 1)), ESC + GS + b'yP': 0, ESC + GS + b'yI': 0,
    ESC + b'*rA': 0, ESC + b'*rB': 0, ESC + b'*rC': 0, ESC + b'*rR': 0, ESC + b'*rN': bytes_thrown_away, **STAR_RASTER,
}
# Between ESC * r A and ESC * r B a line of dots is a letter, a length and so many bytes.
STAR_LINES_OF_DOTS = {b'b': counted(2, word), b'k': counted(2, word)}

NAMES = {0x04: 'EOT', 0x05: 'ENQ', 0x06: 'ACK', 0x07: 'BEL', 0x09: 'HT', 0x0a: 'LF', 0x0b: 'VT', 0x0c: 'FF',
         0x0d: 'CR', 0x0e: 'SO', 0x0f: 'SI', 0x10: 'DLE', 0x12: 'DC2', 0x14: 'DC4', 0x18: 'CAN', 0x19: 'EM',
         0x1a: 'SUB', 0x1b: 'ESC', 0x1c: 'FS', 0x1d: 'GS', 0x1e: 'RS', 0x20: 'SP', 0x03: 'ETX', 0x01: 'SOH',
         0x00: 'NUL', 0x02: 'STX'}
TABLES = {'escpos': ESCPOS, 'star': STAR}
INTRODUCERS = {'escpos': ESC + FS + GS, 'star': ESC}


def name_of(introducer):
    return ' '.join(NAMES.get(byte) or chr(byte) for byte in introducer)


def longest_introducer(table, data, at):
    for size in range(6, 0, -1):
        if data[at:at + size] in table and at + size <= len(data):
            return data[at:at + size]
    return None


def pieces(dialect, data):
    """The pieces of a stream as (offset, length, name), without gaps. The last one may be "cut off"."""
    table = TABLES[dialect]
    at = 0
    in_raster_mode = False
    while at < len(data):
        tables = {**table, **STAR_LINES_OF_DOTS} if in_raster_mode else table
        introducer = longest_introducer(tables, data, at)
        if introducer:
            try:
                end = end_of(data, at + len(introducer), tables[introducer])
            except (IndexError, ValueError):
                end = len(data) + 1
            if end > len(data):
                yield at, len(data) - at, 'cut off: ' + name_of(introducer)
                return
            yield at, end - at, name_of(introducer)
            if introducer == ESC + b'*rA':
                in_raster_mode = True
            elif introducer in (ESC + b'*rB', ESC + b'@'):
                in_raster_mode = False
        elif data[at] >= 0x20 and not in_raster_mode:
            end = at
            while end < len(data) and data[end] >= 0x20:
                end += 1
            yield at, end - at, 'text'
        else:
            end = min(len(data), at + (2 if data[at] in INTRODUCERS[dialect] else 1))
            yield at, end - at, 'unknown'
        at = end


# What acts at once is searched for inside other commands' data too, so it has to be right.
AT_ONCE = [b'\x10\x04\x01', b'\x10\x05\x01', b'\x10\x14\x01\0\x01', b'\x10\x14\x08\x01\x03\x14\x01\x06\x02\x08']


def random_stream(dialect, seed, count=300):
    """So many texts and commands with operands at random; most of them are whole."""
    chosen = random.Random(seed)
    stream = bytearray()
    for _ in range(count):
        introducer = chosen.choice(sorted(TABLES[dialect]))
        stream += bytes(chosen.choices(b'AZaz09 \xe0\xff', k=chosen.randrange(6)))
        if introducer.startswith(DLE):
            stream += chosen.choice(AT_ONCE)
            continue
        stream += introducer + bytes(chosen.choices(range(6), k=8))
        if callable(TABLES[dialect][introducer]):
            stream += bytes(chosen.choices((0, 0x1e, 0x41, 0x61), k=chosen.randrange(60)))
    return bytes(stream)


def main(arguments):
    counts = collections.Counter() if arguments[:1] == ['--count'] else None
    if counts is not None:
        arguments = arguments[1:]
    if len(arguments) < 2 or arguments[0] not in TABLES:
        sys.exit(__doc__.split('\n\n')[1])
    for name in arguments[1:]:
        with open(name, 'rb') as file:
            data = file.read()
        for offset, length, what in pieces(arguments[0], data):
            if counts is not None:
                counts[what if what != 'unknown' else 'unknown ' + data[offset:offset + length].hex(' ')] += 1
            else:
                print(offset, length, what)
    for what, count in sorted((counts or {}).items()):
        print(f'{count:7} {what}')


if __name__ == '__main__':
    main(sys.argv[1:])
