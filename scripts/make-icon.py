#!/usr/bin/env python3
"""Draws the program's icon: two interlocked chain links on a blue tile, as a 32x32 and a
16x16 image of 16 colours, and writes them as one .ico file.

    scripts/make-icon.py app/Linkwright.ico

The .ico is committed; the build does not run this script.
"""
import math
import struct
import sys

# The standard 16-colour palette, as (red, green, blue).
PALETTE = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0),
    (0, 0, 128), (128, 0, 128), (0, 128, 128), (192, 192, 192),
    (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0),
    (0, 0, 255), (255, 0, 255), (0, 255, 255), (255, 255, 255),
]
CLEAR, BLACK, OLIVE, NAVY, SILVER, BLUE, YELLOW, WHITE = None, 0, 3, 4, 7, 12, 11, 15


def segment_distance(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)
    t = max(0.0, min(1.0, t))
    return math.hypot(px - (ax + t * dx), py - (ay + t * dy))


def draw(size):
    """Answers size rows of size palette indexes (None: transparent)."""
    s = size / 32.0
    image = [[CLEAR] * size for _ in range(size)]
    corner = 5 * s

    def in_tile(x, y):
        cx = min(max(x, corner), size - corner)
        cy = min(max(y, corner), size - corner)
        return math.hypot(x - cx, y - cy) <= corner

    # Each link is a capsule ring around a short diagonal axis.
    links = [
        ((9 * s, 9 * s), (15 * s, 15 * s), YELLOW, OLIVE),
        ((17 * s, 17 * s), (23 * s, 23 * s), WHITE, SILVER),
    ]
    outer, inner = 7.2 * s, 3.6 * s

    def link_colour(link, x, y):
        (ax, ay), (bx, by), face, edge = link
        d = segment_distance(x, y, ax, ay, bx, by)
        if inner <= d <= outer:
            return edge if d > outer - 1.1 * s or d < inner + 1.1 * s else face
        return None

    for row in range(size):
        for col in range(size):
            x, y = col + 0.5, row + 0.5
            if not in_tile(x, y):
                continue
            colour = BLUE if not in_tile(x - 2 * s, y - 2 * s) or not in_tile(x + 2 * s, y + 2 * s) else NAVY
            first = link_colour(links[0], x, y)
            second = link_colour(links[1], x, y)
            # The links pass through each other: the first lies on top above the
            # diagonal, the second below it.
            if first is not None and second is not None:
                colour = first if x > y else second
            elif first is not None or second is not None:
                colour = first if first is not None else second
            image[row][col] = colour
    return image


def bitmap(image):
    """The icon image record: header, palette, 4-bit colour rows and the 1-bit mask,
    both bottom-up and padded to four bytes."""
    size = len(image)
    colour_stride = ((size * 4 + 31) // 32) * 4
    mask_stride = ((size + 31) // 32) * 4
    colour_rows, mask_rows = [], []
    for row in reversed(image):
        nibbles = [0 if p is None else p for p in row]
        data = bytes((nibbles[i] << 4) | nibbles[i + 1] for i in range(0, size, 2))
        colour_rows.append(data.ljust(colour_stride, b"\0"))
        mask = bytearray(mask_stride)
        for col, p in enumerate(row):
            if p is None:
                mask[col // 8] |= 0x80 >> (col % 8)
        mask_rows.append(bytes(mask))
    pixels = b"".join(colour_rows) + b"".join(mask_rows)
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 4, 0, len(pixels), 0, 0, 16, 0)
    palette = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in PALETTE)
    return header + palette + pixels


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make-icon.py OUTPUT.ico")
    images = [bitmap(draw(32)), bitmap(draw(16))]
    offset = 6 + 16 * len(images)
    out = struct.pack("<HHH", 0, 1, len(images))
    for size, data in zip((32, 16), images):
        out += struct.pack("<BBBBHHII", size, size, 16, 0, 1, 4, len(data), offset)
        offset += len(data)
    out += b"".join(images)
    with open(sys.argv[1], "wb") as f:
        f.write(out)


if __name__ == "__main__":
    main()
