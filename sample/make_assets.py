#!/usr/bin/env python3
"""Makes the model and the textures of the sample project: ./make_assets.py

Textures show with red and blue exchanged, so what shall look like wood is painted blue here."""
import math
import struct
import zlib
from pathlib import Path

IMPORTED = Path(__file__).parent / "Project" / "Files" / "imported"


def write_png(path, size, color_at):
    """color_at(x, y) gives (red, green, blue)."""
    rows = b"".join(b"\0" + b"".join(bytes(color_at(x, y)) for x in range(size)) for y in range(size))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", size, size, 8, 2, 0, 0, 0)
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
    """Planks in a frame with a diagonal brace; painted blue, seen as wood."""
    wood = (74, 118, 176)
    border = min(x, y, 63 - x, 63 - y)
    across = abs(x - y)
    if border < 8 or across < 6:
        edge = border in (0, 7) or (across == 5 and border >= 8)
        return shaded(wood, (0.55 if edge else 1.15) + grain(x // 3, y) / 1800)
    return shaded(wood, (0.5 if x % 12 == 0 else 0.85) + grain(x, y // 5) / 1500)


def tiles(x, y):
    """Four stone slabs with dark joints."""
    in_slab = (x % 32, y % 32)
    if min(in_slab) < 2:
        return shaded((92, 96, 100), 0.8 + grain(x, y) / 2000)
    slab = 0.9 + grain(x // 32 + 7, y // 32 + 3) / 1400
    return shaded((156, 160, 164), slab + grain(x, y) / 3000 - 0.04)


def write_lighthouse(path):
    """A profile of (radius, height) turned around the y axis."""
    profile = [(1.6, 0), (1.6, 0.4), (1.25, 0.5), (0.95, 3.2), (0.8, 5.2), (1.15, 5.4), (1.15, 5.65), (0.65, 5.65),
               (0.65, 6.5), (0.95, 6.55)]
    segments = 16
    lines = ["# A lighthouse, made for the sample project.", "o Lighthouse"]
    for radius, height in profile:
        for i in range(segments):
            a = 2 * math.pi * i / segments
            lines.append(f"v {math.cos(a) * radius:.5f} {height:.5f} {math.sin(a) * radius:.5f}")
    lines += ["v 0 0 0", "v 0 7.4 0"]
    base, top = len(profile) * segments + 1, len(profile) * segments + 2
    for ring in range(len(profile) - 1):
        for i in range(segments):
            j = (i + 1) % segments
            low, high = ring * segments + 1, (ring + 1) * segments + 1
            lines.append(f"f {low + i} {high + i} {high + j} {low + j}")
    last = (len(profile) - 1) * segments + 1
    for i in range(segments):
        j = (i + 1) % segments
        lines.append(f"f {last + i} {top} {last + j}")
        lines.append(f"f {base} {1 + i} {1 + j}")
    path.write_text("\n".join(lines) + "\n", newline="\n")


IMPORTED.mkdir(parents=True, exist_ok=True)
write_png(IMPORTED / "crate.png", 64, crate)
write_png(IMPORTED / "tiles.png", 64, tiles)
write_lighthouse(IMPORTED / "Lighthouse.obj")
