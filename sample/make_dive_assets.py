#!/usr/bin/env python3
"""Makes the models and the textures of the second sample project: ./make_dive_assets.py

What does not move and looks alike is one model, made where it stands in the scene."""
import math

from sample_files import (
    Project, as_loaded, between, bounds, cube, cylinder, grain, joined, mixed, outward, posed, reshaped, shaded, sphere,
    turned)

BACKDROP = (384, 576)  # pixels of the two pictures of the water


# Textures.

def water(stops, reach, x, y):
    """Slanting rays that fade with the depth. The grain hides the steps between the rows."""
    height = BACKDROP[1]
    depth = y / height
    slant = (x / BACKDROP[0] + 0.22 * depth) * 2 * math.pi
    rays = max(0, math.sin(3 * slant) + 0.6 * math.sin(7 * slant + 1) + 0.4 * math.sin(13 * slant + 2) - 0.4)
    light = 1 + 0.22 * rays * max(0, 1 - depth / reach)
    return shaded(between(stops, depth), light + (grain(x, y) - 128) / 20000)


# Columns of rock in the distance of the first scene: where along the picture, how high, how wide.
COLUMNS_OF_ROCK = [(0.16, 0.42, 0.055), (0.28, 0.58, 0.045), (0.4, 0.72, 0.06), (0.56, 0.66, 0.04), (0.63, 0.5, 0.05),
                   (0.74, 0.62, 0.06), (0.86, 0.36, 0.05)]


def is_rock(x, y):
    across, depth = x / BACKDROP[0], y / BACKDROP[1]
    jag = (grain(x // 5, y // 9) + grain(x // 11, y // 17)) / 51000
    return any(depth > top + jag and abs(across - middle) < half * min(1, 0.45 + (depth - top) * 3) + jag
               for middle, top, half in COLUMNS_OF_ROCK)


def deep(x, y):
    """From the light of the surface into the dark."""
    color = open_water(x, y)
    return shaded(mixed(color, (24, 52, 96), 0.36), 0.97 + 0.06 * (grain(3, y // 7) > 128)) if is_rock(x, y) else color


def open_water(x, y):
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


def corals(x, y):
    """Each height has its own shade."""
    shade = between([(0, (255, 84, 104)), (22, (255, 140, 84)), (42, (206, 92, 240)), (63, (255, 84, 104))], y)
    return shaded(shade, 0.84 + grain(x // 2, y // 2) / 1100)


def kelp(x, y):
    shade = between([(0, (88, 208, 96)), (32, (60, 190, 150)), (63, (88, 208, 96))], y)
    return shaded(shade, 0.74 + 0.2 * (x % 16 < 8) + grain(x, y // 4) / 2000)


def brass(x, y):
    """Plates with rivets."""
    if x % 32 < 1 or y % 32 < 1:
        return shaded((150, 84, 30), 0.9)
    if (x % 8 - 4) ** 2 + (y % 32 - 4) ** 2 < 3:
        return (255, 226, 132)
    return shaded((246, 172, 58), 0.92 + grain(x // 32, y // 32) / 2400 + grain(x, y // 3) / 3600)


def window_color(right, up, x, y):
    """A lit room with a diver's head against it, in an iron frame; lamps beside and a mast above."""
    from_middle = math.hypot(right, up)
    if abs(right) > 0.72:
        return shaded((255, 214, 84), 0.94 + grain(x // 5, y // 5) / 3000)
    if from_middle > 0.47:
        return shaded((96, 100, 112), 0.9 + 0.3 * (y % 12 < 3))
    head = right ** 2 + (up + 0.02) ** 2 < 0.034
    shoulders = right ** 2 / 2.4 + (up + 0.53) ** 2 < 0.085
    if head or shoulders:
        return (28, 62, 84)
    shine = 24 if 0.06 < right - up < 0.16 else 0
    return shaded((255, 236, 150 + shine), 1.05 - from_middle * 0.5)


def jelly(x, y):
    """Pale, with darker stripes that run down."""
    stripe = abs(math.sin(x * math.pi / 8))
    return shaded(mixed((255, 150, 214), (214, 84, 190), stripe * y / 64), 1)


def fish(x, y):
    """Bands across, two on each."""
    color = (255, 246, 226) if x % 13 in range(4) else (255, 138, 32)
    return shaded(color, 0.9 + grain(x, y) / 2600)


def star(x, y):
    spot = (x % 8 - 4) ** 2 + (y % 8 - 4) ** 2 < 5
    return shaded((255, 214, 96) if spot else (255, 128, 46), 0.9 + grain(x, y) / 2600)


def pearl_color(right, up, x, y):
    """Pink ribs that spread from the hinge, the pearl in the middle, a stalk below."""
    if right ** 2 + (up - 0.52) ** 2 < 0.12:
        return (255, 250, 255)
    if up < -0.02:
        return shaded((255, 120, 110), 0.8 + grain(x // 3, y // 5) / 1300)
    rib = math.sin(math.atan2(right, up + 0.4) * 26)
    return shaded((255, 190, 200), 0.92 + 0.1 * rib)


def shell(x, y):
    """Ribs that spread from the hinge."""
    rib = math.sin(math.atan2(x - 32, y + 8) * 26)
    return shaded((255, 190, 200), 0.92 + 0.1 * rib)


def chest_color(right, up, x, y):
    """Boards between two iron bands, and gold above them."""
    if up > 0.42:
        return shaded((255, 206, 64), 0.86 + grain(x // 3, y // 3) / 1300)
    if 0.42 < abs(right) < 0.58:
        return shaded((86, 92, 104), 0.9 + 0.3 * (y % 8 < 2))
    return shaded((146, 88, 46), (0.6 if int(up * 40 + 99) % 9 == 0 else 0.88) + grain(x // 5, y) / 1500)


def lid_color(right, up, x, y):
    return chest_color(right, min(up, 0.4), x, y)


def cliff_color(right, up, x, y):
    """Layers of rock, each in the colour of the water around it."""
    layer = rock(int(right * 6) % 64, int(-up * 32) % 64)
    share = max(0.0, min(1.0, (4.0 - up) / 34.0))
    return tuple(int(c) for c in mixed(layer, mixed((124, 196, 206), (16, 44, 124), share), 0.5))


# Models.

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


def window():
    """What the bell has before it and around it, in its own measures."""
    return joined(posed(disc(), (0.0, 0.0, -0.97), (0.5, 0.5, 1.0)),
                  posed(as_loaded(turned(FRAME, 20)), (0.0, 0.0, -0.86), (0.6, 0.6, 0.6), (math.pi / 2, 0.0, 0.0)),
                  posed(cylinder(8), (0.0, 1.08, 0.0), (0.07, 0.14, 0.07)),
                  *(posed(sphere(), (x, -0.1, -0.25), (0.2, 0.2, 0.2)) for x in (-0.95, 0.95)))


def rotor():
    return joined(posed(cube(), (0.0, 0.0, 0.0), (0.8, 0.03, 0.12)), posed(cube(), (0.0, 0.0, 0.0), (0.12, 0.03, 0.8)))


def pearl():
    """An open shell on a stalk that is as long as the shell is high: the middle of the whole stands on a rock."""
    lower = posed(as_loaded(scallop()), (0.0, 0.12, 0.0), (0.9, 0.9, 0.9))
    upper = posed(as_loaded(scallop()), (0.0, 0.66, 0.66), (0.9, 0.9, 0.9), (-1.9, 0.0, 0.0))
    return joined(lower, upper, posed(sphere(), (0.0, 0.52, -0.1), (0.34, 0.34, 0.34)),
                  posed(cylinder(6), (0.0, -0.75, 0.0), (0.12, 0.75, 0.12)))


def jellyfish():
    return joined(turned(DOME, 18), posed(as_loaded(tentacles()), (0.0, -1.25, 0.0), (1.0, 1.05, 1.0)))


def shoal(heights, radius=3.2):
    """Fish that circle about one axis, each with its head where it swims to, and another on the other side."""
    fish = []
    for j, height in enumerate(heights):
        for i in range(3):
            for side in (0.0, math.pi):
                a, far = i * 0.42 + j * 1.3 + side, radius + 0.7 * (i % 3 - 1)
                fish.append(posed(as_loaded(swimmer()),
                                  (far * math.cos(a), height + 0.55 * (i % 2) + 0.22 * (side > 0), -far * math.sin(a)),
                                  (0.42, 0.42, 0.42), (0.0, a - math.pi / 2, 0.0)))
    return joined(*fish)


def bubbles():
    return joined(*(posed(sphere(10, 6), (x, y, z), (r, r, r)) for x, y, z, r in [
        (0.0, 0.0, 0.0, 0.13), (0.3, 0.5, 0.2, 0.08), (-0.2, 1.1, -0.1, 0.1), (0.15, 1.7, 0.1, 0.06),
        (-0.1, -0.7, 0.2, 0.07)]))


def chest():
    """With gold in it, up to its rim and above. The coins stand, so that none looks up more than to the front."""
    coins = [posed(cylinder(12), (-0.66 + 0.22 * i, 0.44 + 0.07 * (i % 3), 0.1 - 0.16 * (i % 2)), (0.2, 0.035, 0.2),
                   (math.pi / 2 - 0.3, 0.0, 0.3 * (i % 3 - 1))) for i in range(7)]
    return joined(posed(cube(), (0.0, 0.0, 0.0), (0.95, 0.4, 0.62)), *coins)


# What stands still in the first scene.

GROUND = -30.0
WALL = 7.2
LANE = 0.7  # how far before and behind the bell's middle nothing else is

SHOALS = [1.2, -5.6, -12.6, -19.0, -26.6]  # the heights of the fish

# The left and the right end of each ledge, and the height of its top.
LEDGES = [(-7.6, 2.0, -1.6), (-2.0, 7.6, -8.4), (-7.6, 1.6, -15.4), (-1.6, 7.6, -22.6)]


def cliff():
    """Rocks one upon the other, to the left of the shaft."""
    return joined(*(posed(boulder(), (-(WALL + half), 14.0 - 5.4 * i, 0.3), (half, 3.0, 1.9),
                          (0.0, math.pi * (i % 2), 0.0))
                    for i, half in enumerate([1.6, 2.2, 1.7, 2.4, 1.9, 1.6, 2.3, 1.8, 2.1, 2.4])))


def plant(shape, foot, high, turn, flat=1.0):
    x, y, z = foot
    return posed(as_loaded(shape), (x, y + high * 0.96, z), (high, high, high * flat), (0.0, turn, 0.0))


def all_behind(shape, lane):
    """Moved away from the camera until nothing of it is in the lane."""
    nearest = min(z for _, _, z in shape[0])
    return reshaped(shape, lambda x, y, z: (x, y, z + lane - nearest))


def all_before(shape, lane):
    farthest = max(z for _, _, z in shape[0])
    return reshaped(shape, lambda x, y, z: (x, y, z - lane - farthest))


def places_on_ledges(count, shift):
    """(ledge, number, x, top), spread over the ledges and the ground."""
    for i, (left, right, top) in enumerate([*LEDGES, (-2.4, 7.0, GROUND)]):
        first, last = max(left, -WALL) + 0.6, min(right, WALL) - 0.7
        for j in range(count):
            yield i, j, first + (last - first) * ((j * 0.37 + i * 0.17 + shift) % 1.0), top


def kelp_forest():
    """Behind the way of the bell; solid, so that it keeps the bell out of it."""
    plants = [plant(blades(), (x, top - 0.16, 0.95), 0.8 + 0.3 * ((i + 2 * j) % 3), 1.3 * j, 0.6)
              for i, j, x, top in places_on_ledges(4, 0.0)]
    high = [plant(blades(), (x, 2.6, 0.95), 1.2, 0.7, 0.6) for x in (-7.6, 7.6)]
    deep_ones = [plant(blades(), (x, GROUND - 0.1, 1.0), high, x, 0.6) for x, high in ((-6.9, 1.6), (-6.0, 1.0))]
    return all_behind(joined(*plants, *high, *deep_ones), LANE)


def coral_gardens():
    """Before the way of the bell, low and solid."""
    corals_ = [plant(branches(), (x, top - 0.14, -0.9), 0.34 + 0.1 * ((i + j) % 3), 1.7 * j, 0.5)
               for i, j, x, top in places_on_ledges(4, 0.22)]
    high = [plant(branches(), (x, 2.5, -1.6), 0.7, x, 0.5) for x in (-7.7, 7.7)]
    return all_before(joined(*corals_, *high), LANE)


# What stands still in the second scene.

SAND = -3.6


def reef_rocks():
    return joined(*(posed(boulder(), at, half, (0.0, math.pi * (i % 2), 0.0)) for i, (at, half) in enumerate([
        ((-11.5, SAND + 3.0, 4.0), (3.0, 4.4, 2.0)), ((12.0, SAND + 2.6, 4.5), (3.2, 3.8, 2.0)),
        ((-4.0, SAND + 0.2, 5.0), (2.4, 1.0, 1.4)), ((4.6, SAND + 0.4, 6.0), (3.0, 1.4, 1.6)),
        ((0.5, SAND, 9.0), (4.0, 1.2, 1.6))])))


def reef_kelp():
    return joined(*(plant(blades(), foot, high, 1.3 * i) for i, (foot, high) in enumerate([
        ((-6.4, SAND, 2.4), 1.8), ((6.6, SAND, 2.0), 2.1), ((-0.8, SAND, 3.0), 1.3), ((-3.4, SAND, -1.6), 0.6),
        ((9.6, SAND + 3.9, 0.4), 1.1)])))


def reef_corals():
    return joined(*(plant(branches(), foot, high, 1.3 * i) for i, (foot, high) in enumerate([
        ((-5.0, SAND + 1.0, 4.6), 1.1), ((-3.2, SAND + 1.0, 4.8), 0.8), ((3.4, SAND + 1.5, 5.6), 1.2),
        ((5.6, SAND + 1.6, 5.8), 1.0), ((1.4, SAND, 2.2), 0.6), ((-2.4, SAND, 1.4), 0.5), ((2.8, SAND, -1.8), 0.5),
        ((-9.0, SAND + 4.0, 0.0), 0.8), ((8.4, SAND + 4.0, 0.2), 0.9)])))


if __name__ == "__main__":
    project = Project("Dive")
    for backdrop in (deep, lagoon):
        project.texture(backdrop, *BACKDROP)
    for texture in (rock, reef, sand, silt, corals, kelp, brass, jelly, fish, star, shell):
        project.texture(texture)
    for name, shape in [
            ("Boulder", boulder()), ("Square", square()), ("Starfish", starfish()), ("Bell", bell()),
            ("Rotor", rotor()), ("Jellyfish", jellyfish()), ("Shoal", shoal([0.0])), ("Bubbles", bubbles()),
            ("Fish", shoal(SHOALS)), ("KelpForest", kelp_forest()), ("CoralGardens", coral_gardens()),
            ("ReefRocks", reef_rocks()), ("ReefKelp", reef_kelp()), ("ReefCorals", reef_corals())]:
        project.model(name, shape)
    for name, shape, color_at, width, height in [
            ("Window", window(), window_color, 128, 128), ("Pearl", pearl(), pearl_color, 64, 64),
            ("Chest", chest(), chest_color, 64, 64), ("Lid", lid(), lid_color, 64, 64),
            ("Cliff", cliff(), cliff_color, 128, 768)]:
        project.model(name, shape)
        project.picture(name, shape, color_at, width, height)
