#!/usr/bin/env python3
"""Makes the models and the textures of the sample project: ./make_assets.py

What does not move and looks alike is one model, made where it stands in the scene. Its picture gives each height the
colour that belongs there."""
import math

from sample_files import (
    Project, cube, cylinder, grain, joined, posed, shaded, sphere, turned)


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


def gold(x, y):
    return shaded((255, 200, 52), 0.94 + grain(x // 8, y // 8) / 2600)


LIGHTHOUSE = [(0, 0), (1.6, 0), (1.6, 0.4), (1.25, 0.5), (0.95, 3.2), (0.8, 5.2), (1.15, 5.4), (1.15, 5.65),
              (0.65, 5.65), (0.65, 6.5), (0.95, 6.55), (0, 7.4)]
COIN = [(0, -0.06), (0.72, -0.06), (0.8, -0.12), (1, -0.12), (1, 0.12), (0.8, 0.12), (0.72, 0.06), (0, 0.06)]
FOOT = [(0, -0.1), (0.52, -0.1), (0.58, 0), (0.52, 0.1), (0, 0.1)]


def standing_coin():
    """A coin above a foot, and a stake in the ground that is as long as they are high: the middle of the whole is
    what stands on a floor."""
    return joined(posed(turned(COIN, 20), (0.0, 1.6, 0.0), rotation=(math.pi / 2, 0.0, 0.0)), turned(FOOT, 16),
                  posed(cylinder(6), (0.0, -1.35, 0.0), (0.1, 1.25, 0.1)))


def coin_color(right, up, x, y):
    return gold(x, y) if up > 0.59 else shaded((188, 180, 166), 0.86 + grain(x // 6, y) / 1800)


def treasure_color(right, up, x, y):
    return gold(x, y)


def tree():
    """Its foot is at the origin. The crowns are steep, so that no face looks up more than to a side."""
    trunk = posed(cylinder(8), (0.0, 0.5, 0.0), (0.22, 0.5, 0.22))
    crowns = [posed(turned([(0, -1), (1, -1), (0, 1)], 7), (0.0, height, 0.0), (half, tall, half),
                    (0.0, 0.7 * i, 0.0))
              for i, (height, half, tall) in enumerate([(1.72, 1.05, 0.85), (2.66, 0.82, 0.74), (3.46, 0.58, 0.66)])]
    return joined(trunk, *crowns)


def tree_color(right, up, x, y):
    """Over a tree whose foot is at the height 0."""
    if up < 0.9:
        return shaded((150, 98, 60), 0.8 + grain(x // 2, y // 6) / 1200)
    return shaded((84, 156, 70), 0.74 + 0.3 * ((up - 0.9) % 0.95) + grain(x // 3, y // 2) / 1300)


def lamp():
    """Its foot is at the origin."""
    return joined(posed(cylinder(8), (0.0, 0.8, 0.0), (0.07, 0.8, 0.07)),
                  posed(sphere(), (0.0, 1.75, 0.0), (0.2, 0.2, 0.2)))


def lamp_color(right, up, x, y):
    return (255, 236, 120) if up > 1.55 else shaded((88, 74, 70), 0.9 + grain(x, y) / 2600)


TREES = [((-10.6, -0.06, 8.5), 0.3), ((-12.6, -0.06, 5.2), 1.1), ((-10.4, -0.06, 12.6), 2.0),
         ((9.9, -0.06, 12.8), 0.6), ((12.0, -0.06, 9.4), 1.7), ((10.9, -0.06, 5.4), 0.9), ((6.2, -0.06, 15.0), 2.4)]
FAR_TREES = [((-11.0, 0.0, 10.0), 0.2), ((-10.4, 0.0, 16.0), 1.3), ((10.6, 0.0, 12.0), 0.8), ((11.4, 0.0, 17.0), 1.9)]
LAMPS = [(-9.1, -0.06, -1.2), (9.1, -0.06, -1.2), (-3.4, -0.06, 11.4), (3.4, -0.06, 11.4)]


def planted(places):
    return joined(*(posed(tree(), at, rotation=(0.0, yaw, 0.0)) for at, yaw in places))


def on_the_lawn(color_at):
    """The picture of things whose feet stand at the height of the lawn."""
    return lambda right, up, x, y: color_at(right, up + 0.06, x, y)


def lights():
    """The lighthouse and the lamps around the square."""
    return joined(posed(turned(LIGHTHOUSE, 16), (-6.5, -0.1, 16.0), (1.216, 1.216, 1.216)),
                  *(posed(lamp(), at) for at in LAMPS))


def lights_color(right, up, x, y):
    """The lamps stand beside the lighthouse, seen from the front as well as from the side."""
    if up < 1.95 and min(abs(right - column) for column in (-9.6, -9.1, -3.4, 3.0, 3.4, 9.1)) < 0.4:
        return lamp_color(right, up + 0.06, x, y)
    height = (up + 0.1) / 1.216
    if 5.68 < height < 6.5:
        return shaded((255, 226, 110), 0.96 + grain(x // 8, y // 8) / 3000)
    red = height > 6.5 or 1.5 < height < 2.6 or 3.7 < height < 4.8
    return shaded((222, 70, 58) if red else (252, 246, 234), 0.95 + grain(x // 4, y // 4) / 4000)


def cap():
    """Pointed cap and backpack of the walker, in the walker's own measures. The cap is steep, as the trees are."""
    return joined(posed(turned([(0, -1), (1, -1), (1.06, -0.9), (0.4, 0.3), (0, 1)], 16), (0.0, 1.14, 0.0),
                        (0.66, 0.62, 0.66)),
                  posed(cube(), (0.0, 0.04, -0.65), (0.36, 0.38, 0.2)))


def cap_color(right, up, x, y):
    if up > 0.5:
        return shaded((238, 66, 52), 0.96 + grain(x // 4, y // 4) / 4000)
    flap = 0.1 < up < 0.14 or abs(abs(right) - 0.2) < 0.03 and up < 0.14
    return shaded((176, 118, 74), 0.55 if flap else 0.95 + grain(x, y // 2) / 1800)


SEA_SIZE, BEACH = 95.0, (19.0, 5.0)  # half its width; the beach's radius, and how far ahead its middle lies


def sea():
    """The water's face and the beach that rises from it, as rings from the outside to the inside. They end where the
    lawn hides them: what is drawn and then drawn over costs as much as what is seen."""
    radius, ahead = BEACH
    parts = 40  # a multiple of eight, so that the corners of the square are among them
    turns = [math.tau * i / parts for i in range(parts)]

    def ring(share, height):
        return [(share * radius * math.cos(a), height, ahead + share * radius * math.sin(a)) for a in turns]

    def square():
        far = [SEA_SIZE / max(abs(math.cos(a)), abs(math.sin(a))) for a in turns]
        return [(r * math.cos(a), -0.8, r * math.sin(a)) for a, r in zip(turns, far)]

    vertices = square() + ring(1.04, -0.8) + ring(1.0, -0.2) + ring(0.86, -0.2)
    faces = []
    for outer in range(0, 3 * parts, parts):
        for i in range(parts):
            j = (i + 1) % parts
            faces.append((outer + i, outer + parts + i, outer + parts + j, outer + j))
    return vertices, faces


def sea_color(right, ahead, x, y):
    """Seen from above: sand, shallow water around it, the deep."""
    radius, middle = BEACH
    from_shore = math.hypot(right, ahead - middle) - radius - 0.4
    if from_shore < 0:
        return shaded((244, 226, 170), 0.94 + grain(x, y) / 4000)
    shallow = max(0.0, 1 - from_shore / 7)
    color = tuple(a + (b - a) * shallow for a, b in zip((58, 138, 206), (122, 214, 214)))
    return shaded(color, 0.97 + grain(x // 6, y // 3) / 3600)


def boat():
    """Its keel at the height 0, bow towards +z."""
    sail = turned([(0, -1), (1, -1), (0, 1.2)], 4)
    return joined(posed(hull(), (0.0, 0.0, 0.0)), posed(cylinder(6), (0.0, 2.1, -0.2), (0.07, 1.4, 0.07)),
                  posed(sail, (0.0, 2.1, -0.2), (0.08, 1.05, 1.0)))


BOATS_AT = (0.0, -1.0, 8.0)  # the middle of their course, at the height of the keels


def boats():
    """Two of them, one on each side of the middle about which they turn."""
    x, y, z = BOATS_AT
    return joined(posed(boat(), (x + 29.0, y, z), (1.3, 1.3, 1.3), (0.0, math.pi, 0.0)),
                  posed(boat(), (x - 29.0, y, z), (1.3, 1.3, 1.3)))


def boat_color(right, up, x, y):
    if up < BOATS_AT[1] + 1.5:
        return shaded((150, 84, 48), 0.9 + grain(x // 2, y) / 2000)
    return shaded((226, 74, 60) if int(up * 2.2) % 2 else (250, 244, 232), 0.98)


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
    for texture in (crate, tiles, stones, grass, leaves):
        project.texture(texture)
    for name, shape, color_at, width, height in [
            ("Coin", standing_coin(), coin_color, 64, 64),
            ("Treasure", turned(COIN, 20), treasure_color, 64, 64),
            ("Tree", tree(), tree_color, 64, 128),
            ("Trees", planted(TREES), on_the_lawn(tree_color), 192, 512),
            ("FarTrees", planted(FAR_TREES), tree_color, 256, 768),
            ("Lamp", lamp(), lamp_color, 32, 64),
            ("Lights", lights(), lights_color, 192, 256),
            ("Cap", cap(), cap_color, 64, 64),
            ("Sea", sea(), sea_color, 256, 256),
            ("Boats", boats(), boat_color, 64, 512)]:
        project.model(name, shape)
        project.picture(name, shape, color_at, width, height)
