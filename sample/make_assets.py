#!/usr/bin/env python3
"""Makes the models and the textures of the sample project: ./make_assets.py"""
import math
import struct
import zlib
from pathlib import Path

IMPORTED = Path(__file__).parent / "Project" / "Files" / "imported"
SIZE = 64  # of every texture, in pixels


def write_png(path, color_at):
    """color_at(x, y) gives red, green and blue as they are seen: the program shows a texture with red and blue
    exchanged, so they are exchanged here first."""
    def stored(x, y):
        red, green, blue = color_at(x, y)
        return bytes((blue, green, red))

    rows = b"".join(b"\0" + b"".join(stored(x, y) for x in range(SIZE)) for y in range(SIZE))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) +
                     chunk(b"IEND", b""))


def grain(x, y):
    """A number from 0 to 255 that looks random but is the same every time."""
    n = (x * 374761393 + y * 668265263) & 0xFFFFFFFF
    n = ((n ^ n >> 13) * 1274126177) & 0xFFFFFFFF
    return (n ^ n >> 16) & 0xFF


def shaded(color, light):
    return tuple(max(0, min(255, int(c * light))) for c in color)


def crate(x, y):
    """Planks in a frame with a diagonal brace."""
    wood = (176, 118, 74)
    border = min(x, y, 63 - x, 63 - y)
    across = abs(x - y)
    if border < 8 or across < 6:
        edge = border in (0, 7) or (across == 5 and border >= 8)
        return shaded(wood, (0.55 if edge else 1.15) + grain(x // 3, y) / 1800)
    return shaded(wood, (0.5 if x % 12 == 0 else 0.85) + grain(x, y // 5) / 1500)


def tiles(x, y):
    """Four stone slabs with joints."""
    if min(x % 32, y % 32) < 2:
        return shaded((176, 164, 140), 0.8 + grain(x, y) / 2000)
    slab = 0.9 + grain(x // 32 + 7, y // 32 + 3) / 1400
    return shaded((236, 222, 194), slab + grain(x, y) / 3000 - 0.04)


def planks(x, y):
    """Four boards along x, each of its own tone."""
    board = y // 16
    if y % 16 == 0 or x == (board * 23 + 9) % 64:
        return shaded((120, 82, 52), 0.9)
    return shaded((206, 152, 100), 0.86 + grain(board, 5) / 1300 + grain(x // 9, y) / 1700)


def stones(x, y):
    """A wall of four courses, every second one shifted by half a stone."""
    course = y // 16
    along = (x + (16 if course % 2 else 0)) % 64
    if y % 16 < 2 or along % 32 < 2:
        return shaded((132, 126, 118), 0.9 + grain(x, y) / 2500)
    return shaded((214, 206, 194), 0.82 + grain(along // 32 + 3, course) / 1200 + grain(x, y) / 2600)


def grass(x, y):
    return shaded((132, 190, 84), 0.9 + grain(x // 4, y // 4) / 4000 + grain(x, y // 2) / 3000)


def leaves(x, y):
    return shaded((84, 156, 70), 0.78 + grain(x // 5, y // 3) / 900 + grain(x, y) / 2600)


def sand(x, y):
    return shaded((244, 226, 170), 0.92 + grain(x // 2, y) / 3200)


def water(x, y):
    return shaded((58, 138, 206), 0.95 + grain(x // 6, y // 2) / 2600)


def gold(x, y):
    return shaded((255, 200, 52), 0.94 + grain(x // 8, y // 8) / 2600)


def sail(x, y):
    """Red and white stripes, a ball's too."""
    color = (226, 74, 60) if x // 8 % 2 else (250, 244, 232)
    return shaded(color, 0.96 + grain(x // 2, y // 2) / 5000)


def write_obj(path, vertices, faces):
    """Faces name vertices from 0 on, and are seen from the side from which they turn like a clock's hands."""
    lines = ["# Made for the sample project.", f"o {path.stem}"]
    lines += [f"v {x:.5f} {y:.5f} {z:.5f}" for x, y, z in vertices]
    lines += ["f " + " ".join(str(index + 1) for index in face) for face in faces]
    path.write_text("\n".join(lines) + "\n", newline="\n")


def turned(profile, segments):
    """A profile of (radius, height) from the bottom up, turned around the y axis. Its ends lie on the axis."""
    vertices, faces = [], []
    rings = profile[1:-1]
    for radius, height in rings:
        for i in range(segments):
            a = 2 * math.pi * i / segments
            vertices.append((math.cos(a) * radius, height, math.sin(a) * radius))
    base, top = len(vertices), len(vertices) + 1
    vertices += [(0, profile[0][1], 0), (0, profile[-1][1], 0)]
    last = (len(rings) - 1) * segments
    for i in range(segments):
        j = (i + 1) % segments
        for low in range(0, last, segments):
            high = low + segments
            faces.append((low + i, high + i, high + j, low + j))
        faces += [(last + i, top, last + j), (base, i, j)]
    return vertices, faces


LIGHTHOUSE = [(0, 0), (1.6, 0), (1.6, 0.4), (1.25, 0.5), (0.95, 3.2), (0.8, 5.2), (1.15, 5.4), (1.15, 5.65),
              (0.65, 5.65), (0.65, 6.5), (0.95, 6.55), (0, 7.4)]
COIN = [(0, -0.06), (0.72, -0.06), (0.8, -0.12), (1, -0.12), (1, 0.12), (0.8, 0.12), (0.72, 0.06), (0, 0.06)]


def hull():
    """A boat's, bow towards +z: along its length sections of keel, bilges and rails."""
    sections = [(-2.0, 0.75, 0.1), (-1.0, 0.95, 0.0), (0.4, 0.9, 0.0), (1.5, 0.5, 0.15), (2.3, 0.03, 0.5)]
    vertices, faces = [], []
    for z, half_width, keel in sections:
        rail = 0.85 + 0.05 * z * z
        vertices += [(0, keel, z), (half_width * 0.75, keel + 0.25, z), (half_width, rail, z),
                     (-half_width, rail, z), (-half_width * 0.75, keel + 0.25, z)]
    for low in range(0, len(vertices) - 5, 5):
        for i in range(5):
            j = (i + 1) % 5
            faces.append((low + i, low + j, low + 5 + j, low + 5 + i))
    faces.append((4, 3, 2, 1, 0))
    return vertices, faces


if __name__ == "__main__":
    IMPORTED.mkdir(parents=True, exist_ok=True)
    for texture in (crate, tiles, planks, stones, grass, leaves, sand, water, gold, sail):
        write_png(IMPORTED / f"{texture.__name__}.png", texture)
    write_obj(IMPORTED / "Lighthouse.obj", *turned(LIGHTHOUSE, 16))
    write_obj(IMPORTED / "Coin.obj", *turned(COIN, 20))
    write_obj(IMPORTED / "Hull.obj", *hull())
