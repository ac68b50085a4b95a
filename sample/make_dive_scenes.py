#!/usr/bin/env python3
"""Makes the scenes, prefabs and other text files of the second sample project: ./make_dive_scenes.py

In "Main" a diving bell sinks between ledges to a chest on the ground of the sea, past the pearls. In "Reef" it
catches the starfish that drift down."""
import math

from sample_files import (
    BOUNCING, PULSING, SOLID, TURNING, Project, animated, box, camera, glowing, group, image, in_view, mesh, model,
    placed, shiny, size, sunlight, text, text_color, thing, tint)

PEARL_PREFAB = "Files\\Prefabs\\Pearl.prefab"
STAR_PREFAB = "Files\\Prefabs\\Star.prefab"
JELLYFISH_PREFAB = "Files\\Prefabs\\Jellyfish.prefab"
SHOAL_PREFAB = "Files\\Prefabs\\Shoal.prefab"
BUBBLES_PREFAB = "Files\\Prefabs\\Bubbles.prefab"
GLOW_PREFAB = "Files\\Prefabs\\Glow.prefab"

BEHIND = (0.0, math.pi, 0.0)  # turns what is seen from the front only, so that nobody sees it


def in_water(y):
    """The water's colour, which mixes with every other half and half, at a height in the first scene."""
    share = max(0.0, min(1.0, (4.0 - y) / 34.0))
    return tint(*(round(a + (b - a) * share) for a, b in zip((124, 196, 206), (16, 44, 124))))


def bright(look):
    """Its highlight lights up what looks towards the camera."""
    return look | {"roughness": 1.0, "gloss": 0.6}


# Prefabs.

def pearl():
    """In an open shell that floats."""
    return thing("Pearl", (0.0, 0.0, 0.0), scale=size(0.42), **model("Scallop"), **bright(image("shell")),
                 **animated(BOUNCING, 0.7), children=[
                     thing("Upper shell", (0.0, 0.62, 0.7), rotation=(-1.9, 0.0, 0.0), **model("Scallop"),
                           **bright(image("shell"))),
                     thing("Shine", (0.0, 0.28, -0.1), scale=size(0.42), **mesh("Sphere"),
                           **glowing(tint(255, 250, 255)))])


def star():
    """It falls at a steady pace, held back by the water."""
    return thing("Star", (0.0, 0.0, 0.0), scale=size(0.5), **model("Starfish"), **glowing(image("star")),
                 has_rigidbody=1, gravity_strength=3.2, drag=2.0, **SOLID)


def jellyfish():
    """Pulsing brings a size of its own, so what pulses hangs on what gives the size."""
    dome = thing("Dome", (0.0, 0.0, 0.0), **model("Dome"), **glowing(image("jelly")), **animated(PULSING, 0.8))
    arms = thing("Tentacles", (0.0, -1.25, 0.0), scale=size(1.0, 1.05), **model("Tentacles"), **image("jelly"),
                 **animated(TURNING, 0.3))
    return group("Jellyfish", (0.0, 0.0, 0.0), scale=size(0.7), children=[dome, arms], **animated(BOUNCING, 0.25))


def shoal():
    """Fish that circle, each with its head where it swims to."""
    fish = []
    for i in range(6):
        a, radius, height = i * 0.42, 3.2 + 0.7 * (i % 3 - 1), 0.55 * (i % 2) + 0.22 * (i % 3)
        fish.append(thing(f"Fish {i + 1}", (radius * math.cos(a), height, -radius * math.sin(a)),
                          rotation=(0.0, a - math.pi / 2, 0.0), scale=size(0.42), **model("Fish"),
                          **bright(image("fish"))))
    return group("Shoal", (0.0, 0.0, 0.0), children=fish, **animated(TURNING, 0.5))


def glow():
    """A plant of the deep with lights on its stalks, which lean to both sides."""
    stalks = []
    for i, (lean, high) in enumerate([(0.3, 0.62), (-0.35, 0.5), (0.05, 0.85)]):
        light = group(f"Tip {i + 1}", (0.0, 1.0, 0.0), scale=(0.13 / 0.035, 0.13 / high, 0.13 / 0.035), children=[
            thing(f"Light {i + 1}", (0.0, 0.0, 0.0), **mesh("Sphere"), **glowing(tint(80, 255, 190)),
                  **animated(PULSING, 0.7 + 0.3 * i))])
        stalks.append(thing(f"Stalk {i + 1}", (-math.sin(lean) * high, math.cos(lean) * high, 0.0),
                            rotation=(0.0, 0.0, lean), scale=(0.035, high, 0.035), **mesh("Cylinder"),
                            **image("kelp"), children=[light]))
    return group("Glow", (0.0, 0.0, 0.0), children=stalks)


def bubbles():
    """Their gravity draws them up, the small ones more slowly."""
    return group("Bubbles", (0.0, 0.0, 0.0), children=[
        thing(f"Bubble {i + 1}", (x, y, z), scale=size(radius), **mesh("Sphere"), **shiny(tint(20, 255, 255)),
              has_gravitation=1, gravity_strength=-0.35 * radius)
        for i, (x, y, z, radius) in enumerate([
            (0.0, 0.0, 0.0, 0.13), (0.3, 0.5, 0.2, 0.08), (-0.2, 1.1, -0.1, 0.1), (0.15, 1.7, 0.1, 0.06),
            (-0.1, -0.7, 0.2, 0.07)])])


# What both scenes have.

BELL_SIZE = 0.62


def diving_bell(at, **rules):
    """The player. It is slow to start and slow to stop."""
    brass = shiny(image("brass"))
    blades = group("Rotor", (0.0, 1.2, 0.0), **animated(TURNING, 7.0), children=[
        thing("Blade", (0.0, 0.0, 0.0), scale=(0.8, 0.03, 0.12), **image("brass")),
        thing("Blade across", (0.0, 0.0, 0.0), scale=(0.12, 0.03, 0.8), **image("brass"))])
    lamps = [thing(f"Lamp {side}", (x, -0.1, -0.25), scale=size(0.2), **mesh("Sphere"), **glowing(image("gold")))
             for side, x in (("left", -0.95), ("right", 0.95))]
    return thing(
        "Diving bell", at, scale=size(BELL_SIZE), **model("Bell"), **brass, has_rigidbody=1, mass=3.0, drag=2.0,
        **SOLID, scripts=("PlayerController", "CollectOnTouch"), children=[
            thing("Window", (0.0, 0.0, -0.92), scale=size(0.5), **model("Disc"), **glowing(image("pane"))),
            thing("Frame", (0.0, 0.0, -0.86), rotation=(math.pi / 2, 0.0, 0.0), scale=size(0.6), **model("Frame"),
                  **shiny(image("chest"))),
            thing("Mast", (0.0, 1.08, 0.0), scale=size(0.07, 0.14), **mesh("Cylinder"), **image("chest")),
            blades, *lamps,
        ], **rules)


def lane(at, half):
    """Walls before and behind the bell that nobody sees keep it in the plane of the game."""
    x, y, z = at
    return [thing(f"Glass {side}", (x, y, z + away), rotation=BEHIND, scale=(*half, 1.0), **model("Square"), **SOLID)
            for side, away in (("front", -0.72), ("back", 0.72))]


def boulder(name, at, half, texture, turns=0, **values):
    return thing(name, at, rotation=(0.0, math.pi * (turns % 2), 0.0), scale=half, **model("Boulder"),
                 **image(texture, repeat=True), **values)


CORAL = ("Branches", "coral")
VIOLET = ("Branches", "violet")
KELP = ("Blades", "kelp")


def garden(plants):
    """Corals and kelp, each given by the place of its foot, its half height and its kind."""
    return [thing(f"Plant {i + 1}", (x, foot + high * 0.96, z), rotation=(0.0, 1.3 * i, 0.0), scale=size(high),
                  **model(shape), **bright(image(texture)))
            for i, ((x, foot, z), high, (shape, texture)) in enumerate(plants)]


# The first scene: down into the dark.

CAMERA, CAMERA_PITCH = (0.0, 0.4, -9.2), 0.02  # from the bell
GROUND = -30.0
WALL = 7.2

# The left and the right end of each, and the height of its top.
LEDGES = [(-9.0, 2.0, -1.6), (-2.0, 9.0, -7.0), (-9.0, -2.0, -12.4), (2.0, 9.0, -12.8), (-4.0, 4.0, -18.0),
          (-9.0, 1.4, -23.6)]


def on_bell(at):
    return tuple(c / BELL_SIZE for c in at)


def walls():
    """Rocks one upon the other."""
    return [boulder(f"Wall {side} {i + 1}", (sign * (WALL + half), 14.0 - 5.4 * i, 0.3), (half, 3.0, 1.9), "rock",
                    turns=i, **in_water(14.0 - 5.4 * i), **SOLID)
            for i, half in enumerate([1.6, 2.2, 1.7, 2.4, 1.9, 1.6, 2.3, 1.8, 2.1, 2.4])
            for side, sign in (("left", -1), ("right", 1))]


def ledges():
    return [boulder(f"Ledge {i + 1}", ((left + right) / 2, top - 0.5, 0.2), ((right - left) / 2, 0.5, 1.8), "rock",
                    turns=i, **in_water(top), **SOLID)
            for i, (left, right, top) in enumerate(LEDGES)]


def distance():
    """Rocks far behind, hardly more than a shade of the water."""
    return [boulder(f"Far rock {i + 1}", (x, y, 13.0), (half, tall, 2.0), "rock", turns=i, **in_water(y - 9.0))
            for i, (x, y, half, tall) in enumerate([
                (-17.0, -3.0, 5.0, 5.0), (13.0, -8.0, 5.0, 4.0), (-24.0, -14.0, 5.0, 6.0), (-5.0, -18.0, 4.0, 5.0),
                (20.0, -18.0, 5.0, 6.0), (13.0, -25.0, 5.0, 7.0), (-16.0, -26.0, 6.0, 7.0), (-28.0, -29.0, 5.0, 6.0),
                (2.0, -29.0, 6.0, 3.5), (27.0, -28.0, 6.0, 8.0)])]


def gardens():
    """What grows on the ledges and on the ground, behind the bell's way and, low, before it."""
    kinds = [(0.85, CORAL), (1.5, KELP), (0.7, VIOLET), (1.1, KELP), (0.55, CORAL)]
    plants = [((-8.6, GROUND - 0.1, -2.6), 1.3, KELP), ((7.8, GROUND - 0.1, -3.6), 1.0, KELP)]
    for i, (left, right, top) in enumerate([*LEDGES, (-2.6, 7.0, GROUND)]):
        first, last = max(left, -WALL) + 0.6, min(right, WALL) - 0.7
        for j in range(6):
            high, kind = kinds[(5 * i + 2 * j) % 5]
            x = first + (last - first) * ((j * 0.37 + i * 0.17) % 1.0)
            plants.append(((x, top - 0.16, 1.25), high, kind) if j % 3 else ((x, top - 0.16, -1.2), high * 0.5, kind))
    return garden(plants)


def strewn():
    """What lies on the ground before the bell's way."""
    stars = [thing(f"Starfish {i + 1}", (x, GROUND + 0.06, z), rotation=(math.pi / 2, turn, 0.0), scale=size(half),
                   **model("Starfish"), **image("star"))
             for i, (x, z, half, turn) in enumerate([
                 (-5.4, -3.4, 0.34, 0.2), (-0.6, -4.0, 0.3, 0.9), (3.4, -1.9, 0.26, 0.5), (6.6, -4.6, 0.32, 0.0),
                 (1.2, -2.2, 0.2, 0.3)])]
    shells = [thing(f"Shell {i + 1}", (x, GROUND + 0.1, z), rotation=(tilt, turn, 0.0), scale=size(half),
                    **model("Scallop"), **image("shell"))
              for i, (x, z, half, tilt, turn) in enumerate([
                  (-3.6, -2.4, 0.24, 2.8, 0.4), (2.4, -3.4, 0.2, 0.3, 2.0), (5.2, -1.6, 0.22, 2.7, 1.0),
                  (-7.6, -2.2, 0.26, 0.2, 0.0)])]
    return [*stars, *shells]


def lights():
    return [placed(GLOW_PREFAB, glow(), at, 0.7 * i) for i, at in enumerate([
        (6.0, -12.9, 1.2), (-2.8, -18.1, 1.3), (3.2, -18.1, 1.3), (-6.3, -23.7, 1.2), (0.4, -23.7, -1.2),
        (-6.6, GROUND, 1.6), (3.2, GROUND, 2.4), (6.4, GROUND, 0.9), (-2.4, GROUND, -2.8), (1.6, GROUND, -4.6),
        (-7.4, GROUND, -4.0), (5.0, GROUND, -3.0)])]


def treasure():
    """The bell opens it: that is to say, collects its lid."""
    x, y, z = -4.6, GROUND, 0.0
    coins = [thing(f"Coin {i + 1}", (x + dx, y + 0.84, z + dz), rotation=(tilt, 0.0, 0.4), scale=(0.2, 0.035, 0.2),
                   **mesh("Cylinder"), **glowing(image("gold")))
             for i, (dx, dz, tilt) in enumerate([(-0.5, -0.2, 0.5), (0.1, -0.25, 0.7), (0.5, -0.1, 0.4)])]
    return [thing("Chest", (x, y + 0.4, z), scale=(0.95, 0.4, 0.62), **image("chest"), **SOLID),
            thing("Gold", (x, y + 0.76, z), scale=(0.85, 0.24, 0.5), **mesh("Sphere"), **glowing(image("gold"))),
            *coins,
            thing("Lid", (x, y + 1.14, z), scale=(0.98, 0.9, 0.92), **model("Lid"), **image("chest"))]


def opener():
    """Hangs on the bell, as large as it is, and sees to the lid while the bell itself sees to the pearls."""
    return group("Opener", (0.0, 0.0, 0.0), scale=size(0.84), parent=2, scripts=("CollectOnTouch",),
                 collect_target="Lid")


def main_scene():
    white = text_color(250, 255, 246)
    pearls = [placed(PEARL_PREFAB, pearl(), at) for at in [
        (-4.6, -0.9, 0.0), (4.9, -3.6, 0.0), (1.4, -6.2, 0.0), (-4.4, -8.8, 0.0), (-5.2, -11.6, 0.0),
        (5.0, -12.0, 0.0), (0.0, -15.2, 0.0), (-5.6, -19.8, 0.0), (5.4, -20.6, 0.0), (-2.6, -22.8, 0.0),
        (4.4, -26.6, 0.0), (0.6, -29.2, 0.0)]]
    jellies = [placed(JELLYFISH_PREFAB, jellyfish(), at) for at in [
        (1.6, 3.4, 4.0), (3.2, -9.8, 3.4), (-3.0, -16.0, 3.6), (2.0, -21.0, 3.0), (-1.0, -27.0, 4.0)]]
    shoals = [placed(SHOAL_PREFAB, shoal(), at, yaw) for at, yaw in [
        ((-3.4, 1.6, 5.4), 0.6), ((2.0, -4.4, 5.4), 2.4), ((-1.0, -14.4, 5.6), 1.0), ((1.0, -26.0, 5.6), 0.0)]]
    streams = [placed(BUBBLES_PREFAB, bubbles(), at) for at in [
        (3.4, -1.0, 0.6), (-4.6, -6.0, 0.9), (5.6, -10.0, 0.8), (-0.4, -14.0, 0.9), (5.4, -17.5, 0.6),
        (-6.2, -21.0, 0.6), (3.0, -27.0, 0.7), (-6.0, -29.0, 0.6)]]
    ground = box("Ground", (0.0, GROUND - 2.0, 4.0), (40.0, 2.0, 15.0), "silt")
    return [camera(on_bell(CAMERA), CAMERA_PITCH, 0x143E66, parent=2), sunlight((-3.0, 8.0, -4.0), 2.75),
            diving_bell((0.0, 2.2, 0.0), gravity_strength=3.2, collect_prefab=PEARL_PREFAB),
            opener(),
            thing("Water", (0.0, -12.0, 17.0), scale=(38.0, 38.0, 1.0), **model("Square"), **image("deep")),
            ground, *distance(), *walls(), *ledges(), *lane((0.0, -10.0, 0.0), (9.0, 24.0)), *gardens(),
            *strewn(), *treasure(), *lights(), *jellies, *shoals, *pearls, *streams,
            # Last, for what comes behind a text is drawn over it.
            text("Score", on_bell(in_view(CAMERA, CAMERA_PITCH, -0.55, 2.9)), "Score: 0", 40, parent=2, **white),
            text("Hint", (-4.9, -1.85, -1.6), "Gather the pearls: A D", 20, **white),
            text("Hint below", (-5.6, GROUND + 2.6, 0.0), "The chest: touch its lid.", 20, **white)]


# The second scene: a morning above the reef.

REEF_CAMERA, REEF_PITCH = (0.0, 1.6, -9.6), -0.04
SAND = -3.6


def spawner(side, x, top, half):
    """The whole of its pane must be free before another star appears above it: so they come one by one."""
    return thing(f"Star fall {side}", (x, top - half, 0.0), rotation=BEHIND, scale=(2.7, half, 1.0), **model("Square"),
                 scripts=("PlanePrefabSpawner",), spawner_prefab=STAR_PREFAB)


def second_scene():
    blue = text_color(0, 40, 72)
    sand = thing("Sand", (0.0, SAND - 2.0, 6.0), scale=(40.0, 2.0, 15.0), **image("sand", repeat=True))
    rocks = [boulder(f"Reef {i + 1}", at, half, "reef", turns=i, **values) for i, (at, half, values) in enumerate([
        ((-8.6, SAND + 1.6, 0.4), (1.7, 2.6, 1.8), SOLID), ((8.6, SAND + 1.6, 0.4), (1.7, 2.6, 1.8), SOLID),
        ((-11.5, SAND + 3.0, 4.0), (3.0, 4.4, 2.0), {}), ((12.0, SAND + 2.6, 4.5), (3.2, 3.8, 2.0), {}),
        ((-4.0, SAND + 0.2, 5.0), (2.4, 1.0, 1.4), {}), ((4.6, SAND + 0.4, 6.0), (3.0, 1.4, 1.6), {}),
        ((0.5, SAND, 9.0), (4.0, 1.2, 1.6), {})])]
    plants = garden([
        ((-5.0, SAND + 1.0, 4.6), 1.1, CORAL), ((-3.2, SAND + 1.0, 4.8), 0.8, VIOLET),
        ((3.4, SAND + 1.5, 5.6), 1.2, CORAL), ((5.6, SAND + 1.6, 5.8), 1.0, VIOLET), ((-6.4, SAND, 2.4), 1.8, KELP),
        ((6.6, SAND, 2.0), 2.1, KELP), ((-0.8, SAND, 3.0), 1.3, KELP), ((1.4, SAND, 2.2), 0.6, CORAL),
        ((-2.4, SAND, 1.4), 0.5, VIOLET), ((2.8, SAND, -1.8), 0.5, CORAL), ((-3.4, SAND, -1.6), 0.6, KELP),
        ((-9.0, SAND + 4.0, 0.0), 0.8, CORAL), ((8.4, SAND + 4.0, 0.2), 0.9, VIOLET),
        ((9.6, SAND + 3.9, 0.4), 1.1, KELP)])
    return [camera(REEF_CAMERA, REEF_PITCH, 0x6FC8C0), sunlight((-3.0, 8.0, -4.0), 2.75),
            diving_bell((0.0, -1.6, 0.0), gravity_strength=0.0, collect_prefab=STAR_PREFAB),
            thing("Water", (0.0, 6.0, 18.0), scale=(36.0, 36.0, 1.0), **model("Square"), **image("lagoon")),
            sand, *rocks, *lane((0.0, 2.0, 0.0), (9.0, 9.0)), *plants,
            placed(SHOAL_PREFAB, shoal(), (-2.0, 1.4, 6.4), 0.4), placed(SHOAL_PREFAB, shoal(), (4.0, 3.0, 7.4), 2.6),
            placed(BUBBLES_PREFAB, bubbles(), (-5.6, -3.0, 1.6)), placed(BUBBLES_PREFAB, bubbles(), (5.2, -2.6, 1.8)),
            spawner("left", -3.3, 8.6, 5.6), spawner("right", 3.3, 9.4, 6.0),
            text("Score", in_view(REEF_CAMERA, REEF_PITCH, -0.55, 2.9), "Score: 0", 40, **blue),
            text("Hint", in_view(REEF_CAMERA, REEF_PITCH, -1.13, 2.42), "Catch the starfish: A D", 20, **blue)]


if __name__ == "__main__":
    project = Project("Dive")
    project.prefab(PEARL_PREFAB, pearl())
    project.prefab(STAR_PREFAB, star())
    project.prefab(JELLYFISH_PREFAB, jellyfish())
    project.prefab(SHOAL_PREFAB, shoal())
    project.prefab(BUBBLES_PREFAB, bubbles())
    project.prefab(GLOW_PREFAB, glow())
    project.scene("Files\\Scenes\\Reef.scene", second_scene())
    project.first_scene("Files\\Scenes\\Main.scene", main_scene())
    project.blueprint("Files\\Blueprints\\Dive.blueprint", [
        ("Event BeginPlay", 130, 130), ("Print String", 420, 130), ("Branch", 710, 220), ("Print String", 1000, 130)])
    project.player_script()
