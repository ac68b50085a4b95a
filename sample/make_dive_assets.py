#!/usr/bin/env python3
"""Makes the models and the textures of the second sample project: ./make_dive_assets.py"""
import math

from sample_files import Project, grain, shaded, turned

BACKDROP = (256, 384)  # pixels of the two pictures of the water


# Textures.

def mixed(a, b, share_of_b):
    return tuple(x + (y - x) * share_of_b for x, y in zip(a, b))


def between(stops, at):
    """The colour at a place among (place, colour), which stand in rising order."""
    for (low, low_color), (high, high_color) in zip(stops, stops[1:]):
        if at <= high:
            return mixed(low_color, high_color, (at - low) / (high - low))
    return stops[-1][1]


def water(stops, reach, x, y):
    """Slanting rays that fade with the depth. The grain hides the steps between the rows."""
    height = BACKDROP[1]
    depth = y / height
    slant = (x / BACKDROP[0] + 0.22 * depth) * 2 * math.pi
    rays = max(0, math.sin(3 * slant) + 0.6 * math.sin(7 * slant + 1) + 0.4 * math.sin(13 * slant + 2) - 0.4)
    light = 1 + 0.22 * rays * max(0, 1 - depth / reach)
    return shaded(between(stops, depth), light + (grain(x, y) - 128) / 20000)


def deep(x, y):
    """From the light of the surface into the dark."""
    return water([(0, (206, 255, 246)), (0.16, (120, 246, 240)), (0.33, (40, 190, 218)), (0.5, (22, 112, 176)),
                  (0.68, (20, 60, 132)), (0.85, (14, 30, 84)), (1, (8, 14, 48))], 0.7, x, y)


def lagoon(x, y):
    """Shallow water over a light ground."""
    return water([(0, (216, 255, 250)), (0.35, (140, 250, 246)), (0.62, (60, 222, 236)), (0.8, (24, 176, 216)),
                  (1, (20, 140, 196))], 0.9, x, y)


def rock(x, y):
    """Layers of stone, blue and violet."""
    layer = (y + grain(x // 8, 1) // 90) // 6
    color = mixed((92, 118, 156), (132, 104, 168), grain(layer, 9) / 255)
    return shaded(color, 0.72 + grain(2, layer) / 700 + grain(x, y) / 2400)


def reef(x, y):
    """A warm stone, with holes."""
    hole = grain(x // 4, y // 4) > 232
    return shaded((255, 164, 136), (0.72 if hole else 0.92) + grain(x // 7, y // 5) / 1500 + grain(x, y) / 3000)


def rippled(color, depth, x, y):
    ripple = math.sin((y + 3 * math.sin(x * math.pi / 16)) * math.pi / 8)
    return shaded(color, 0.93 + depth * ripple + grain(x, y) / 4000)


def sand(x, y):
    return rippled((255, 234, 180), 0.05, x, y)


def silt(x, y):
    """The sand of the deep, in the colour of its water."""
    return rippled((56, 98, 160), 0.07, x, y)


def coral(x, y):
    return shaded((255, 84, 104), 0.84 + grain(x // 2, y // 2) / 1100)


def violet(x, y):
    return shaded((190, 96, 255), 0.84 + grain(x // 3, y // 3) / 1200)


def kelp(x, y):
    return shaded((88, 208, 96), 0.74 + 0.2 * (x % 16 < 8) + grain(x, y // 4) / 2000)


def brass(x, y):
    """Plates with rivets."""
    if x % 32 < 1 or y % 32 < 1:
        return shaded((150, 84, 30), 0.9)
    if (x % 8 - 4) ** 2 + (y % 32 - 4) ** 2 < 3:
        return (255, 226, 132)
    return shaded((246, 172, 58), 0.92 + grain(x // 32, y // 32) / 2400 + grain(x, y // 3) / 3600)


def pane(x, y):
    """The window of the bell: a lit room with a diver's head against it."""
    head = (x - 32) ** 2 + (y - 34) ** 2 < 150
    shoulders = (x - 32) ** 2 / 2.4 + (y - 66) ** 2 < 340
    if head or shoulders:
        return (28, 62, 84)
    shine = 24 if (x + y) % 64 in range(20, 28) else 0
    return shaded((255, 236, 150 + shine), 1.05 - math.hypot(x - 32, y - 32) / 120)


def jelly(x, y):
    """Pale, with darker stripes that run down."""
    stripe = abs(math.sin(x * math.pi / 8))
    return shaded(mixed((255, 150, 214), (214, 84, 190), stripe * y / 64), 1)


def fish(x, y):
    """Bands across, from head to tail."""
    color = (255, 246, 226) if x in range(18, 24) or x in range(38, 43) else (255, 138, 32)
    return shaded(color, 0.9 + grain(x, y) / 2600)


def star(x, y):
    spot = (x % 8 - 4) ** 2 + (y % 8 - 4) ** 2 < 5
    return shaded((255, 214, 96) if spot else (255, 128, 46), 0.9 + grain(x, y) / 2600)


def shell(x, y):
    """Ribs that spread from the hinge."""
    rib = math.sin(math.atan2(x - 32, y + 8) * 26)
    return shaded((255, 190, 200), 0.92 + 0.1 * rib)


def chest(x, y):
    """Boards between two iron bands."""
    if x in range(10, 16) or x in range(48, 54):
        return shaded((86, 92, 104), 0.9 + 0.3 * (y % 12 < 3))
    return shaded((146, 88, 46), (0.6 if y % 16 == 0 else 0.88) + grain(x // 9, y) / 1500)


def gold(x, y):
    return shaded((255, 206, 64), 0.86 + grain(x // 5, y // 5) / 1300)


# Models.

def reshaped(shape, move):
    """Each vertex moved on its own. A move that mirrors would turn the faces inside out."""
    vertices, faces = shape
    return [move(*vertex) for vertex in vertices], faces


def joined(*shapes):
    vertices, faces = [], []
    for more_vertices, more_faces in shapes:
        faces += [tuple(len(vertices) + index for index in face) for face in more_faces]
        vertices += more_vertices
    return vertices, faces


def outward(vertices, faces):
    """Turns the faces of a shape without hollows so that they are seen from outside."""
    middle = [sum(axis) / len(vertices) for axis in zip(*vertices)]

    def turned_out(face):
        a, b, c = ([p - q for p, q in zip(vertices[i], middle)] for i in face[:3])
        u, v = [q - p for p, q in zip(a, b)], [q - p for p, q in zip(a, c)]
        n = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
        return face if sum(p * q for p, q in zip(n, a)) > 0 else face[::-1]

    return vertices, [turned_out(face) for face in faces]


def boulder():
    """A worn block that fills the cube from -1 to 1, as the built-in Cube does."""
    steps = 4
    places, faces = {}, []
    for axis in range(3):
        for side in (0, steps):
            for i in range(steps):
                for j in range(steps):
                    corners = []
                    for di, dj in ((0, 0), (1, 0), (1, 1), (0, 1)):
                        corner = [i + di, j + dj]
                        corner.insert(axis, side)
                        corners.append(places.setdefault(tuple(corner), len(places)))
                    faces.append(tuple(corners))

    def worn(place, corner):
        x, y, z = (2 * c / steps - 1 for c in corner)
        length = math.sqrt(x * x + y * y + z * z)
        return tuple(c * (0.76 + 0.28 / length) + (grain(place + 5 * i, sum(corner) + 11 * corner[i]) - 128) / 900
                     for i, c in enumerate((x, y, z)))

    vertices = [worn(place, corner) for place, corner in enumerate(places)]
    reach = [(min(axis), max(axis)) for axis in zip(*vertices)]
    fitted = [tuple(2 * (c - low) / (high - low) - 1 for c, (low, high) in zip(vertex, reach)) for vertex in vertices]
    return outward(fitted, faces)


def square():
    """Seen from -z only, so that turned round it is a wall that nobody sees."""
    return [(-1, -1, 0), (-1, 1, 0), (1, 1, 0), (1, -1, 0)], [(0, 1, 2, 3)]


def disc():
    """A window, seen from -z."""
    angles = [-2 * math.pi * i / 24 for i in range(24)]
    return [(math.cos(a), math.sin(a), 0) for a in angles], [tuple(range(24))]


def stalk(height, thickness, lean, angle, bend=1.6):
    """Grows from the origin and leans over more and more."""
    profile = [(0, 0), (1, 0), (0.8, 0.35), (0.66, 0.7), (0.6, 0.95), (0, 1)]

    def bent(x, y, z):
        away = lean * y ** bend
        return (x * thickness + math.cos(angle) * away, y * height, z * thickness + math.sin(angle) * away)

    return reshaped(turned(profile, 6), bent)


def branches():
    """A coral's, from one foot."""
    return joined(*(stalk(h, 0.13, lean, 2 * math.pi * i / 6 + lean) for i, (h, lean) in enumerate([
        (1.5, 0.35), (1.1, 0.75), (1.7, 0.25), (0.9, 0.8), (1.3, 0.6), (1.0, 0.5)])))


def blades():
    """Kelp: long leaves that wave."""
    def blade(height, x_foot, z_foot, turn):
        profile = [(0, 0)] + [(0.12 * math.sin(math.pi * min(0.97, 0.25 + t * 0.75)), t)
                              for t in (i / 8 for i in range(9))] + [(0, 1.02)]

        def waving(x, y, z):
            wave = 0.18 * math.sin(5 * y + turn) * y
            return (x_foot + x + wave, y * height, z_foot + z * 0.35 + wave * 0.4)

        return reshaped(turned(profile, 4), waving)

    return joined(blade(3.0, 0, 0, 0), blade(2.3, 0.3, 0.12, 1.4), blade(2.6, -0.28, 0.1, 2.6),
                  blade(1.7, 0.12, -0.2, 4.0))


def tentacles():
    """They hang from the height 0."""
    def hanging(i):
        a = 2 * math.pi * i / 7
        return reshaped(stalk(1.7 - 0.3 * (i % 3), 0.06, 0.25, a, 3), lambda x, y, z: (
            x + 0.5 * math.cos(a) + 0.09 * math.sin(5 * y + i), -y, -z - 0.5 * math.sin(a)))

    return joined(*map(hanging, range(7)))


def spindle(outline, half):
    """A flat outline with a point before and one behind its middle."""
    vertices = [(x, y, 0.0) for x, y in outline] + [(0.0, 0.0, -half), (0.0, 0.0, half)]
    count = len(outline)
    faces = [(i, (i + 1) % count, count + side) for i in range(count) for side in (0, 1)]
    return outward(vertices, faces)


def starfish():
    reach = [(1 if i % 2 == 0 else 0.42) for i in range(10)]
    return spindle([(r * math.sin(math.pi * i / 5), r * math.cos(math.pi * i / 5)) for i, r in enumerate(reach)], 0.26)


def swimmer():
    """A fish, its head towards -x."""
    body = reshaped(turned([(0, -1), (0.2, -0.85), (0.42, -0.4), (0.44, 0), (0.26, 0.5), (0.09, 0.85), (0, 0.9)], 10),
                    lambda x, y, z: (y, -x, z * 0.5))
    tail = reshaped(spindle([(-0.3, 0), (0.35, 0.5), (0.2, 0), (0.35, -0.5)], 0.07),
                    lambda x, y, z: (x + 1.0, y, z))
    fin = reshaped(spindle([(-0.35, -0.1), (0.1, 0.38), (0.4, -0.1)], 0.06), lambda x, y, z: (x, y + 0.4, z))
    return joined(body, tail, fin)


def scallop():
    """A shell's lower half, open to the top, with a wavy rim."""
    bowl = turned([(0, -0.3), (0.55, -0.24), (0.9, -0.06), (1, 0.06), (0.9, 0.05), (0.5, -0.12), (0, -0.16)], 24)

    def waved(x, y, z):
        rim = 1 + 0.09 * math.cos(8 * math.atan2(z, x))
        return (x * rim, y, z * rim)

    return reshaped(bowl, waved)


def lid():
    """Half a barrel, along x."""
    arch = [(math.cos(math.pi * i / 8), math.sin(math.pi * i / 8) * 0.8) for i in range(9)]
    vertices = [(x, y, z * 0.7) for x in (-1.0, 1.0) for z, y in arch]
    sides = [(i, (i + 1) % 9, 9 + (i + 1) % 9, 9 + i) for i in range(9)]
    return outward(vertices, [*sides, tuple(range(9)), tuple(range(9, 18))])


def ball(radius, first, last, steps):
    """The profile of a ball between two angles, which are counted from its lowest point."""
    angles = (first + (last - first) * i / steps for i in range(steps + 1))
    return [(radius * math.sin(a), -radius * math.cos(a)) for a in angles]


def bell():
    """The diving bell: a ball on a ring, with a hatch."""
    return turned([(0, -1), (0.62, -1), (0.68, -0.88), (0.5, -0.74), *ball(0.88, 0.75, 2.72, 10), (0.36, 0.92),
                   (0.3, 1), (0, 1)], 20)


FRAME = [(0, -0.1), (1, -0.1), (1.06, 0), (1, 0.1), (0.84, 0.1), (0.78, 0.02), (0, 0.02)]
DOME = [(0, -0.16), (0.6, -0.3), (0.94, -0.34), (1, -0.2), (0.95, 0.2), (0.76, 0.56), (0.42, 0.8), (0, 0.88)]

if __name__ == "__main__":
    project = Project("Dive")
    for backdrop in (deep, lagoon):
        project.texture(backdrop, *BACKDROP)
    for texture in (rock, reef, sand, silt, coral, violet, kelp, brass, pane, jelly, fish, star, shell, chest, gold):
        project.texture(texture)
    project.model("Boulder", boulder())
    project.model("Square", square())
    project.model("Disc", disc())
    project.model("Branches", branches())
    project.model("Blades", blades())
    project.model("Dome", turned(DOME, 18))
    project.model("Tentacles", tentacles())
    project.model("Starfish", starfish())
    project.model("Fish", swimmer())
    project.model("Scallop", scallop())
    project.model("Lid", lid())
    project.model("Bell", bell())
    project.model("Frame", turned(FRAME, 20))
