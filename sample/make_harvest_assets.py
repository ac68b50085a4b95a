#!/usr/bin/env python3
"""Makes the models and the textures of the third sample project: ./make_harvest_assets.py"""
import math

from sample_files import (
    Project, between, cylinder, grain, joined, mixed, outward, posed, shaded, sphere, turned)

SKY = (512, 192)  # pixels of the evening sky


# Textures.

def hill(x, height, waves):
    return height + sum(high * math.sin(x / SKY[0] * 2 * math.pi * often + shift) for high, often, shift in waves)


def sky(x, y):
    """The sun has just reached the hills."""
    if y > hill(x, 158, [(5, 3, 0.4), (2, 11, 1)]):
        return shaded((92, 62, 66), 0.96 + grain(x // 3, y) / 3000)
    if y > hill(x, 146, [(7, 2, 2), (2.5, 7, 0)]):
        return shaded((136, 76, 92), 1)
    if y > hill(x, 136, [(9, 2, 4.4), (3, 5, 1)]):
        return shaded((186, 98, 104), 1)
    color = between([(0, (52, 46, 110)), (0.3, (128, 74, 138)), (0.5, (226, 112, 118)), (0.64, (255, 168, 96)),
                     (0.74, (255, 220, 140))], y / SKY[1])
    from_sun = math.hypot((x - 316) * 1.31, y - 124)
    if from_sun < 11:
        return (255, 226, 140)
    cloud = 8 < (y * 7 + 6 * math.sin(x / 19) + 4 * math.sin(x / 7)) % 96 < 26 and 46 < y < 112
    glow = max(0.0, 1 - from_sun / 90)
    color = mixed(color, (255, 236, 170), glow * 0.6)
    return shaded(mixed(color, (255, 190, 170), 0.35) if cloud else color, 1 + (grain(x, y) - 128) / 20000)


def meadow(x, y):
    """Grass that has seen the summer, and leaves on it."""
    leaf = grain(x // 4, y // 4)
    if leaf > 238:
        return shaded([(226, 112, 40), (206, 62, 44), (240, 178, 60)][leaf % 3], 0.9 + grain(x, y) / 2000)
    return shaded((158, 148, 70), 0.86 + grain(x // 4, y // 4) / 3000 + grain(x, y // 2) / 2200)


def beech(x, y):
    """A hedge in October."""
    leaf = grain(x // 4, y // 3)
    color = [(196, 84, 44), (222, 124, 48), (168, 58, 46), (206, 104, 40)][leaf % 4]
    return shaded(color, 0.8 + leaf / 1500 + grain(x, y) / 3000)


def blanket(x, y):
    """Red and white checks."""
    stripes = (x // 8 % 2) + (y // 8 % 2)
    color = [(250, 240, 226), (226, 128, 116), (196, 48, 50)][stripes]
    return shaded(color, 0.94 + grain(x, y) / 3600)


def hay(x, y):
    """A bale between two boards."""
    if y < 6 or y > 57:
        return shaded((124, 82, 52), 0.9 + grain(x // 9, y) / 1500)
    return shaded((232, 190, 96), 0.74 + grain(x // 7, y) / 700)


# Models, and how their pictures are coloured. What stands has its foot at the height 0.

def pointing(shape, at, scale, up, yaw):
    """A shape whose top points up by an angle, and to a side by another."""
    return posed(shape, at, scale, (math.pi / 2 - up, yaw, 0.0))


def hedgehog():
    """Its nose towards +z."""
    spike = turned([(0, 0), (1, 0), (0, 1)], 5)
    body = posed(sphere(14, 8), (0.0, 0.0, 0.0), (0.72, 0.6, 0.92))
    spikes = []
    for ring, up in enumerate((0.16, 0.5, 0.85, 1.2)):
        count = (15, 12, 9, 5)[ring]
        for i in range(count):
            yaw = 2 * math.pi * (i + 0.5 * (ring % 2)) / count
            if abs(math.remainder(yaw, 2 * math.pi)) < 0.75 and up < 0.7:
                continue  # the face
            at = (0.66 * math.cos(up) * math.sin(yaw), 0.54 * math.sin(up), 0.84 * math.cos(up) * math.cos(yaw) - 0.06)
            spikes.append(pointing(spike, at, (0.13, 0.42, 0.13), up * 0.8 + 0.2, yaw))
    snout = pointing(turned([(0, -1), (1, -1), (0.7, 0), (0.18, 1), (0, 1)], 10), (0.0, -0.16, 0.98),
                     (0.34, 0.3, 0.34), 0.0, 0.0)
    nose = posed(sphere(8, 6), (0.0, -0.16, 1.3), (0.1, 0.1, 0.1))
    ears = [posed(sphere(8, 6), (x, 0.32, 0.66), (0.16, 0.18, 0.08)) for x in (-0.36, 0.36)]
    feet = [posed(sphere(8, 6), (x, -0.56, z), (0.16, 0.1, 0.22)) for x in (-0.36, 0.36) for z in (-0.4, 0.45)]
    return joined(body, *spikes, snout, nose, *ears, *feet)


def hedgehog_color(right, up, x, y):
    """Pale feet, and spikes that grow lighter towards the top."""
    if up < -0.44:
        return shaded((226, 178, 130), 0.92 + grain(x // 3, y // 3) / 2200)
    return shaded((150, 100, 70), 0.7 + 0.5 * up + grain(x // 2, y // 2) / 900)


def snail():
    """It looks towards +x."""
    shell = [posed(sphere(12, 10), (-0.1, 0.62, 0.0), (0.62, 0.62, 0.36)),
             posed(sphere(12, 10), (-0.1, 0.62, 0.0), (0.4, 0.4, 0.46)),
             posed(sphere(10, 8), (-0.1, 0.62, 0.0), (0.2, 0.2, 0.54))]
    foot = posed(sphere(12, 8), (0.1, 0.14, 0.0), (1.0, 0.16, 0.28))
    head = posed(sphere(10, 8), (0.92, 0.32, 0.0), (0.24, 0.3, 0.2))
    eyes = [joined(posed(cylinder(6), (1.0, 0.72, z), (0.035, 0.22, 0.035)),
                   posed(sphere(8, 6), (1.0, 0.96, z), (0.08, 0.08, 0.08))) for z in (-0.12, 0.12)]
    return joined(*shell, foot, head, *eyes)


def snail_color(right, up, x, y):
    if right > 0.64 or up < 0.26:
        return shaded((232, 196, 150) if up < 0.86 else (60, 44, 48), 0.92 + grain(x // 3, y // 3) / 2600)
    turn = math.atan2(up - 0.62, right + 0.1) / (2 * math.pi)
    ring = (math.hypot(right + 0.1, up - 0.62) / 0.21 - turn) % 1
    return shaded(mixed((224, 120, 96), (136, 62, 84), ring), 0.96 + grain(x // 3, y // 3) / 3000)


def mushroom():
    cap = turned([(0, 0.86), (0.9, 0.8), (1, 0.92), (0.86, 1.3), (0.5, 1.75), (0, 1.98)], 14)
    return joined(posed(turned([(0, 0), (0.42, 0), (0.3, 0.5), (0.26, 0.9), (0, 0.9)], 10), (0.0, 0.0, 0.0)), cap)


def mushroom_color(right, up, x, y):
    if up < 0.84:
        return shaded((250, 238, 216), 0.92 + grain(x // 3, y // 6) / 2600)
    dot = math.hypot((right + 2 + 0.25 * (int(up * 2.4) % 2)) % 0.5 - 0.25, (up * 1.0) % 0.42 - 0.21) < 0.1
    return (255, 246, 230) if dot else shaded((222, 52, 44), 0.95 + grain(x // 4, y // 4) / 3600)


def apple():
    """Around its middle. A stalk and a leaf are on top."""
    fruit = turned([(0, -0.72), (0.3, -0.84), (0.72, -0.6), (0.94, -0.05), (0.84, 0.5), (0.46, 0.72), (0, 0.56)], 14)
    leaf = outward([(0, 0, 0), (0.3, 0.12, 0.1), (0.62, 0.06, 0), (0.3, 0.12, -0.1), (0.3, 0.02, 0)],
                   [(0, 1, 3), (1, 2, 3), (0, 4, 1), (1, 4, 2), (2, 4, 3), (3, 4, 0)])
    return joined(fruit, posed(cylinder(6), (0.0, 0.74, 0.0), (0.05, 0.2, 0.05)), posed(leaf, (0.0, 0.8, 0.0)))


def apple_color(right, up, x, y):
    if up > 0.76:
        return (112, 168, 62) if right > 0.06 else (110, 76, 48)
    return shaded(mixed((224, 44, 40), (250, 190, 70), max(0, 0.5 * right + 0.4 * up)), 0.95 + grain(x // 3, y) / 3000)


def tree(high):
    """A crown like a flame on a trunk. It is steep, so that no face looks up more than to a side."""
    trunk = turned([(0, 0), (0.34, 0), (0.2, 0.8), (0.16, 2.0), (0, 2.0)], 8)
    crown = turned([(0, 1.5), (0.7, 1.5), (1.2, 2.3), (1.0, 3.3), (0.5, 4.5), (0, 5.4)], 9)
    return posed(joined(trunk, crown), (0.0, 0.0, 0.0), (high, high, high))


TREES = [((-13.4, 0.0, 3.0), 1.2), ((-12.2, 0.0, 8.4), 1.0), ((-14.6, 0.0, 13.0), 1.4), ((-9.4, 0.0, 18.4), 1.1),
         ((-8.0, 0.0, 21.0), 1.3), ((4.2, 0.0, 21.2), 0.8), ((11.0, 0.0, 21.0), 1.3), ((13.2, 0.0, 15.0), 1.1),
         ((12.4, 0.0, 9.6), 1.35), ((13.8, 0.0, 4.2), 1.0), ((-19.0, 0.0, 22.0), 1.7), ((20.0, 0.0, 20.0), 1.6)]
LANTERNS = [(-8.6, 0.0, -3.6), (8.6, 0.0, -3.6), (-3.0, 0.0, 4.0), (5.2, 0.0, 7.2), (-8.6, 0.0, 10.6), (8.6, 0.0, 10.6)]


def trees():
    return joined(*(posed(tree(high), at, rotation=(0.0, 1.1 * i, 0.0)) for i, (at, high) in enumerate(TREES)))


def trees_color(right, up, x, y):
    """Each place along the garden has its own shade of autumn."""
    if up < 1.25:
        return shaded((104, 70, 54), 0.8 + grain(x // 2, y // 6) / 1200)
    shade = [(238, 140, 40), (208, 66, 44), (244, 190, 66), (222, 104, 44), (176, 52, 52)][int(right / 2.6 + 40) % 5]
    return shaded(shade, 0.8 + grain(x // 3, y // 3) / 900)


def lantern():
    """A post, a housing of light, a roof."""
    return joined(posed(cylinder(8), (0.0, 0.7, 0.0), (0.07, 0.7, 0.07)),
                  posed(turned([(0, 0), (0.16, 0), (0.24, 0.5), (0, 0.5)], 8), (0.0, 1.4, 0.0)),
                  posed(turned([(0, 0), (0.32, 0), (0, 0.42)], 8), (0.0, 1.9, 0.0)))


def lanterns():
    return joined(*(posed(lantern(), at) for at in LANTERNS))


def lanterns_color(right, up, x, y):
    return (255, 232, 130) if 1.42 < up < 1.9 else shaded((70, 56, 62), 0.94 + grain(x, y) / 3000)


def ground():
    """Its top at the height 0, cut into fields: where the camera stands over a large face, the texture is drawn askew."""
    across = [-84, -50, -30, -20, *range(-14, 15, 4), 20, 30, 50, 84]
    ahead = [-22, *range(-14, 27, 4), 34, 44, 62]
    vertices = [(float(x), 0.0, float(z)) for z in ahead for x in across]
    faces = []
    for row in range(len(ahead) - 1):
        for column in range(len(across) - 1):
            at = row * len(across) + column
            faces.append((at, at + len(across), at + len(across) + 1, at + 1))
    low = len(vertices)
    vertices += [(x, -1.0, z) for x in (-84.0, 84.0) for z in (-22.0, 62.0)]
    return vertices, [*faces, (low, low + 2, low + 3, low + 1)]


def square():
    """Seen from -z only."""
    return [(-1, -1, 0), (-1, 1, 0), (1, 1, 0), (1, -1, 0)], [(0, 1, 2, 3)]



if __name__ == "__main__":
    project = Project("Harvest")
    project.texture(sky, *SKY)
    for texture in (meadow, beech, blanket, hay):
        project.texture(texture)
    project.model("Square", square())
    project.model("Meadow", ground())
    for name, shape, color_at, width, height in [
            ("Hedgehog", hedgehog(), hedgehog_color, 64, 64), ("Snail", snail(), snail_color, 96, 96),
            ("Mushroom", mushroom(), mushroom_color, 64, 64), ("Apple", apple(), apple_color, 64, 64),
            ("Trees", trees(), trees_color, 512, 512), ("Lanterns", lanterns(), lanterns_color, 32, 512)]:
        project.model(name, shape)
        project.picture(name, shape, color_at, width, height)
