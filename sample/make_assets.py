#!/usr/bin/env python3
"""Makes the models and the textures of the sample project: ./make_assets.py"""
from sample_files import Project, grain, shaded, turned


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
    project = Project("Project")
    for texture in (crate, tiles, planks, stones, grass, leaves, sand, water, gold, sail):
        project.texture(texture)
    project.model("Lighthouse", turned(LIGHTHOUSE, 16))
    project.model("Coin", turned(COIN, 20))
    project.model("Hull", hull())
