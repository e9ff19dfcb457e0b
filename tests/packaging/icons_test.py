"""The icons as pictures: icons_test.py <folder of kavo's icons in hicolor>.

Each has the size of its folder, and the well stays inside the tile: along the edge there is nothing but
the tile's own blue, or nothing at all.
"""
import pathlib
import struct
import sys
import zlib

SIZES = [16, 22, 24, 32, 48, 64, 128, 256]


def rows_of(png):
    """The rows of a PNG file of eight bits a component with alpha, as lists of (r, g, b, a)."""
    data = png.read_bytes()
    at, packed = 8, b""
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at : at + 8])
        chunk = data[at + 8 : at + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", chunk)
            assert (depth, colour, interlace) == (8, 6, 0), f"{png}: another kind of PNG"
        elif kind == b"IDAT":
            packed += chunk
        at += 12 + length
    raw = zlib.decompress(packed)
    stride = 4 * width
    above, rows = bytearray(stride), []
    for y in range(height):
        kind = raw[y * (stride + 1)]
        line = bytearray(raw[y * (stride + 1) + 1 : (y + 1) * (stride + 1)])
        for i in range(stride):
            left = line[i - 4] if i >= 4 else 0
            corner = above[i - 4] if i >= 4 else 0
            line[i] = (line[i] + predicted(kind, left, above[i], corner)) & 255
        rows.append([tuple(line[4 * x : 4 * x + 4]) for x in range(width)])
        above = line
    return rows


def predicted(kind, left, up, corner):
    if kind == 4:
        guess = left + up - corner
        return min((abs(guess - left), 0, left), (abs(guess - up), 1, up), (abs(guess - corner), 2, corner))[2]
    return [0, left, up, (left + up) // 2][kind]


def faults_of(size, rows):
    if len(rows) != size or len(rows[0]) != size:
        yield f"is {len(rows[0])} x {len(rows)}"
        return
    edge = max(1, size // 25)
    for y, row in enumerate(rows):
        for x, (red, _, blue, alpha) in enumerate(row):
            is_at_the_edge = min(x, y, size - 1 - x, size - 1 - y) < edge
            if is_at_the_edge and alpha > 0 and red >= blue:
                yield f"something lies across the tile's edge at {x}, {y}"
                return
    warm = sum(red > blue and alpha == 255 for row in rows for red, _, blue, alpha in row)
    if warm < size * size // 20:
        yield "hardly anything is drawn on the tile"


def main():
    folder = pathlib.Path(sys.argv[1])
    found = sorted(int(icon.parts[-3].split("x")[0]) for icon in folder.glob("*x*/apps/kavo.png"))
    faults = [] if found == SIZES else [f"the sizes are {found}"]
    for size in found:
        rows = rows_of(folder / f"{size}x{size}" / "apps" / "kavo.png")
        faults += [f"{size}: {fault}" for fault in faults_of(size, rows)]
    for fault in faults:
        print(f"FAILED: {fault}", file=sys.stderr)
    return 1 if faults else 0


sys.exit(main())
