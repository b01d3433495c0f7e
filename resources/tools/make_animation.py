#!/usr/bin/env python3
"""Writes resources/connect.gif: a bubble and a server with a light that travels between them.

The program cuts the file at the graphic control extensions and drops what follows the last of them, so the last
picture repeats the first and is never missed. Every picture is whole and stands alone; the outside is transparent.
"""

import math
import struct
from pathlib import Path

WIDTH, HEIGHT = 96, 48
STEPS = 12  # pictures of one round
DELAY = 12  # hundredths of a second
GRID = 4  # samples to a pixel's side
DOTS = [36 + 6 * i for i in range(5)]  # their middles

BLUE, DARK_BLUE = (61, 134, 209), (39, 102, 168)
TEAL, DARK_TEAL = (35, 165, 160), (21, 120, 115)
GREY, LIGHT, WHITE = (154, 163, 173), (143, 240, 174), (255, 255, 255)
SOLID = (BLUE, DARK_BLUE, TEAL, DARK_TEAL, GREY, LIGHT, WHITE)


def mixed(a, b, share):
    return tuple(round(x + (y - x) * share) for x, y in zip(a, b))


def palette():
    """32 colours, so that the loop count stands at the usual place; the first is the transparent one."""
    pairs = ((BLUE, DARK_BLUE), (BLUE, WHITE), (TEAL, DARK_TEAL), (TEAL, WHITE), (TEAL, LIGHT), (GREY, BLUE))
    colours = [(255, 255, 255), *SOLID]
    colours += [mixed(a, b, share) for a, b in pairs for share in (0.25, 0.5, 0.75)]
    colours += [mixed(GREY, BLUE, 0.9), mixed(GREY, TEAL, 0.5)]
    return colours + [(0, 0, 0)] * (32 - len(colours))


def in_box(x, y, left, top, right, bottom, radius):
    dx = max(left + radius - x, 0, x - right + radius)
    dy = max(top + radius - y, 0, y - bottom + radius)
    return left <= x <= right and top <= y <= bottom and math.hypot(dx, dy) <= radius


def in_tail(x, y, grow):
    return 28 - grow <= y <= 40 + grow and 8 - grow <= x <= 8 + grow + (40 - y) * 0.9


def colour_at(x, y, lights):
    """The colour of a point, None outside the drawing. `lights` are the brightnesses of the dots and the lamp."""
    if in_box(x, y, 5, 9, 27, 29, 4) or in_tail(x, y, -1.5):
        stem = in_box(x, y, 10.5, 12, 13.5, 25.5, 1.5)
        ringed = 2.8 <= math.hypot(x - 16.5, y - 21) <= 5.8 and x > 11
        return WHITE if stem or ringed else BLUE
    if in_box(x, y, 3.5, 7.5, 28.5, 30.5, 5) or in_tail(x, y, 0):
        return DARK_BLUE
    for top in (8, 25):
        if in_box(x, y, 69, top + 1.5, 91, top + 12.5, 2):
            if math.hypot(x - 74.5, y - top - 7) <= 2.2:
                return LIGHT if lights[-1] > 0.5 else mixed(TEAL, WHITE, 0.5)
            return WHITE if in_box(x, y, 80, top + 6, 88, top + 8, 1) else TEAL
        if in_box(x, y, 67.5, top, 92.5, top + 14, 3):
            return DARK_TEAL
    for centre, light in zip(DOTS, lights):
        if math.hypot(x - centre, y - 24) <= 1.6 + light:
            return mixed(GREY, BLUE, light)
    return None


def lights_of(step):
    """A light that runs to the server in the first half of the round and back in the second."""
    way = step / (STEPS / 2)
    position = (way if way <= 1 else 2 - way) * (len(DOTS) + 1) - 1
    return [max(0.0, 1 - abs(i - position) / 1.6) for i in range(len(DOTS))] + [1.0 if position > 3.5 else 0.0]


def pixel(column, row, lights, colours):
    points = [
        colour_at(column + (i + 0.5) / GRID, row + (j + 0.5) / GRID, lights)
        for i in range(GRID)
        for j in range(GRID)
    ]
    seen = [point for point in points if point]
    if len(seen) * 2 < len(points):
        return 0
    mean = tuple(sum(point[i] for point in seen) / len(seen) for i in range(3))
    return min(range(1, len(colours)), key=lambda k: sum((a - b) ** 2 for a, b in zip(colours[k], mean)))


def compressed(pixels, bits):
    """GIF's LZW, as sub-blocks."""
    clear, end = 1 << bits, (1 << bits) + 1
    table, width, codes, buffer, filled = {}, bits + 1, bytearray(), 0, 0

    def put(code):
        nonlocal buffer, filled
        buffer |= code << filled
        filled += width
        while filled >= 8:
            codes.append(buffer & 255)
            buffer >>= 8
            filled -= 8

    put(clear)
    table, free, prefix = {(i,): i for i in range(clear)}, end + 1, ()
    for value in pixels:
        longer = prefix + (value,)
        if longer in table:
            prefix = longer
            continue
        put(table[prefix])
        if free == 4096:
            put(clear)
            table, free, width = {(i,): i for i in range(clear)}, end + 1, bits + 1
        else:
            table[longer] = free
            if free == 1 << width:
                width += 1
            free += 1
        prefix = (value,)
    put(table[prefix])
    put(end)
    if filled:
        codes.append(buffer & 255)
    blocks = (codes[i : i + 255] for i in range(0, len(codes), 255))
    return b"".join(bytes([len(block)]) + bytes(block) for block in blocks) + b"\0"


def picture(step, colours):
    lights = lights_of(step % STEPS)
    pixels = [pixel(column, row, lights, colours) for row in range(HEIGHT) for column in range(WIDTH)]
    control = b"\x21\xf9\x04" + struct.pack("<BHB", 2 << 2 | 1, DELAY, 0) + b"\0"
    return control + b"\x2c" + struct.pack("<HHHHB", 0, 0, WIDTH, HEIGHT, 0) + b"\x05" + compressed(pixels, 5)


def main():
    colours = palette()
    screen = b"GIF89a" + struct.pack("<HHBBB", WIDTH, HEIGHT, 0xF4, 0, 0)
    loop = b"\x21\xff\x0bNETSCAPE2.0\x03\x01" + struct.pack("<H", 0) + b"\0"
    pictures = [picture(step, colours) for step in range(STEPS + 1)]
    data = screen + bytes(sum(colours, ())) + loop + b"".join(pictures) + b"\x3b"
    assert data.count(b"\x00\x21\xf9") == STEPS + 1, "the pixels hold the bytes of a separator"
    Path(__file__).resolve().parent.parent.joinpath("connect.gif").write_bytes(data)


if __name__ == "__main__":
    main()
