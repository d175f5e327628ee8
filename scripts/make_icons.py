#!/usr/bin/env python3
"""Draws the small pictures in icons/, one per component, as PNG files.

Each picture uses another PNG colour type (RGBA, palette, grey, grey with alpha), so
that the loader meets each kind in the tests. Run it from anywhere; it rewrites icons/.
"""
import os
import struct
import zlib

SIZE = 32
HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "..", "icons")


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def png(colour_type, depth, rows, palette=None):
    """rows: one bytes object a row, already packed for the depth."""
    head = struct.pack(">IIBBBBB", SIZE, SIZE, depth, colour_type, 0, 0, 0)
    raw = b"".join(b"\0" + row for row in rows)
    out = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head)
    if palette:
        out += chunk(b"PLTE", b"".join(bytes(c) for c in palette))
    return out + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


def note(x, y):
    """A quaver: a round head low on the left, a stem, a flag."""
    head = (x - 11) ** 2 + ((y - 23) * 1.3) ** 2 <= 30
    stem = 15 <= x <= 16 and 5 <= y <= 23
    flag = 17 <= x <= 22 and 5 + (x - 17) <= y <= 8 + (x - 17)
    return head or stem or flag


def book(x, y):
    """0 outside, 1 cover, 2 page edge, 3 the cross on the cover."""
    if not (5 <= x <= 26 and 3 <= y <= 28):
        return 0
    if x >= 24 or y >= 27:
        return 2
    if (14 <= x <= 16 and 7 <= y <= 21) or (10 <= x <= 20 and 11 <= y <= 13):
        return 3
    return 1


def song():
    rows = []
    for y in range(SIZE):
        row = bytearray()
        for x in range(SIZE):
            row += bytes((32, 64, 160, 255)) if note(x, y) else bytes((0, 0, 0, 0))
        rows.append(bytes(row))
    return png(6, 8, rows)


def bible():
    # Four colours at four bits a pixel: two pixels a byte.
    palette = [(255, 255, 255), (120, 40, 30), (240, 230, 200), (220, 180, 60)]
    rows = []
    for y in range(SIZE):
        row = bytearray()
        for x in range(0, SIZE, 2):
            row.append(book(x, y) << 4 | book(x + 1, y))
        rows.append(bytes(row))
    return png(3, 4, rows, palette)


def bible_book():
    shades = [255, 60, 200, 140]
    return png(0, 8, [bytes(shades[book(x, y)] for x in range(SIZE)) for y in range(SIZE)])


def verse():
    # Three lines of text on a transparent ground.
    rows = []
    for y in range(SIZE):
        row = bytearray()
        for x in range(SIZE):
            line = y in (8, 9, 15, 16, 22, 23) and 4 <= x <= (27 if y < 20 else 18)
            row += bytes((40, 255)) if line else bytes((0, 0))
        rows.append(bytes(row))
    return png(4, 8, rows)


def main():
    os.makedirs(OUT, exist_ok=True)
    for name, make in (("VXSong", song), ("VXBible", bible), ("VXBibleBook", bible_book), ("VXSongVerse", verse)):
        with open(os.path.join(OUT, name + ".png"), "wb") as f:
            f.write(make())


if __name__ == "__main__":
    main()
