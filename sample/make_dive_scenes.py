#!/usr/bin/env python3
"""Makes the scenes, prefabs and other text files of the second sample project: ./make_dive_scenes.py

In "Main" a diving bell sinks between ledges to a chest on the ground of the sea, past the pearls. In "Reef" it
catches the starfish that drift down. Each scene has at most 21 objects, which is as many as the Hierarchy shows in the
window's first size."""
import math

from make_dive_assets import (
    GROUND, LANE, LEDGES, SAND, SHOALS, bubbles, cliff, coral_gardens, kelp_forest, jellyfish, pearl, reef_corals,
    reef_kelp, reef_rocks, rotor, shoal, window)
from sample_files import (
    BOUNCING, SOLID, TURNING, Project, animated, bounds, box, camera, glowing, image, in_view, mesh, model, placed,
    scenery, shiny, size, sunlight, text, text_color, thing, tint)

PEARL_PREFAB = "Files\\Prefabs\\Pearl.prefab"
STAR_PREFAB = "Files\\Prefabs\\Star.prefab"
JELLYFISH_PREFAB = "Files\\Prefabs\\Jellyfish.prefab"
SHOAL_PREFAB = "Files\\Prefabs\\Shoal.prefab"
BUBBLES_PREFAB = "Files\\Prefabs\\Bubbles.prefab"

BEHIND = (0.0, math.pi, 0.0)  # turns what is seen from the front only, so that nobody sees it


def in_water(y):
    """The water's colour, which mixes with every other half and half, at a height in the first scene."""
    share = max(0.0, min(1.0, (4.0 - y) / 34.0))
    return tint(*(round(a + (b - a) * share) for a, b in zip((124, 196, 206), (16, 44, 124))))


def bright(look):
    """Its highlight lights up what looks towards the camera."""
    return look | {"roughness": 1.0, "gloss": 0.6}


# Prefabs. Each is one object.

def prefab(name, shape, large=1.0, **values):
    return thing(name, (0.0, 0.0, 0.0), scale=size(bounds(shape)[1] * large), **model(name), **values)


def grown_pearl():
    """It grows where the middle of its stalk touches a ledge."""
    return prefab("Pearl", pearl(), 0.42, **bright(image("Pearl")), **animated(BOUNCING, 0.7))


def star():
    """It falls at a steady pace, held back by the water."""
    return thing("Star", (0.0, 0.0, 0.0), scale=size(0.5), **model("Starfish"), **glowing(image("star")),
                 has_rigidbody=1, gravity_strength=3.2, drag=2.0, **SOLID)


def floating_jellyfish():
    return prefab("Jellyfish", jellyfish(), 0.7, **glowing(image("jelly")), **animated(BOUNCING, 0.25))


def circling_shoal():
    return prefab("Shoal", shoal([0.0]), **bright(image("fish", repeat=True)), **animated(TURNING, 0.5))


def rising_bubbles():
    """Their gravity draws them up."""
    return prefab("Bubbles", bubbles(), **shiny(tint(20, 255, 255)), has_gravitation=1, gravity_strength=-0.04)


# What both scenes have.

BELL_SIZE = 0.62


def diving_bell(at, opens="", **rules):
    """The player. It is slow to start and slow to stop. Its window sees to what it opens while the bell itself sees to
    what it gathers."""
    scripts = {"scripts": ("CollectOnTouch",), "collect_target": opens} if opens else {}
    return thing(
        "Diving bell", at, scale=size(BELL_SIZE), **model("Bell"), **shiny(image("brass")), has_rigidbody=1,
        mass=3.0, drag=2.0, **SOLID, scripts=("PlayerController", "CollectOnTouch"), children=[
            scenery("Window", "Window", window(), **glowing(image("Window")), **scripts),
            thing("Rotor", (0.0, 1.2, 0.0), scale=size(bounds(rotor())[1]), **model("Rotor"), **image("brass"),
                  **animated(TURNING, 7.0)),
        ], **rules)


def words(name, eye, pitch, right, up, shown, pixels, color, measure=1.0, **values):
    """A text that stays where it is in a camera's view. The last objects of a scene are its texts, for what comes
    behind a text is drawn over it."""
    at = tuple(c / measure for c in in_view(eye, pitch, right, up))
    return text(name, at, shown, pixels, **color, **values)


# The first scene: down into the dark.

CAMERA, CAMERA_PITCH = (0.0, 0.4, -9.2), 0.02  # from the bell


def on_bell(at):
    return tuple(c / BELL_SIZE for c in at)


def cliffs():
    """The same rocks on both sides, turned round on the right."""
    (x, y, z), half = bounds(cliff())
    return [thing(f"Rocks {side}", (sign * x, y, z), rotation=(0.0, turn, 0.0), scale=size(half), **model("Cliff"),
                  **image("Cliff"), **SOLID)
            for side, sign, turn in (("left", 1, 0.0), ("right", -1, math.pi))]


def ledges():
    """On each a pearl grows, and another when that one is taken."""
    return [thing(f"Ledge {i + 1}", ((left + right) / 2, top - 0.5, 0.0), rotation=(0.0, math.pi * (i % 2), 0.0),
                  scale=((right - left) / 2, 0.5, 1.15), **model("Boulder"), **image("rock", repeat=True),
                  **in_water(top), **SOLID, scripts=("PlanePrefabSpawner",), spawner_prefab=PEARL_PREFAB)
            for i, (left, right, top) in enumerate(LEDGES)]


def treasure():
    """The bell opens it: that is to say, collects its lid."""
    x, y, z = -4.6, GROUND, 0.0
    return [thing("Chest", (x, y + 0.4, z), scale=size(0.95), **model("Chest"), **bright(image("Chest")), **SOLID),
            thing("Lid", (x, y + 1.14, z), scale=(0.98, 0.9, 0.92), **model("Lid"), **image("Lid"))]


def main_scene():
    white = text_color(250, 255, 246)
    view = (CAMERA, CAMERA_PITCH)
    ground = box("Ground", (0.0, GROUND - 2.0, 4.0), (40.0, 2.0, 15.0), "silt")
    _, height, _ = bounds(shoal(SHOALS))[0]
    return [camera(on_bell(CAMERA), CAMERA_PITCH, 0x143E66, parent=2), sunlight((-3.0, 8.0, -4.0), 2.75),
            diving_bell((0.0, 2.2, 0.0), opens="Lid", gravity_strength=3.2, collect_prefab=PEARL_PREFAB),
            thing("Water", (0.0, -12.0, 17.0), scale=(38.0, 38.0, 1.0), **model("Square"), **image("deep")),
            *cliffs(), *ledges(), ground,
            scenery("Kelp", "KelpForest", kelp_forest(), **bright(image("kelp", repeat=True)), **SOLID),
            scenery("Corals", "CoralGardens", coral_gardens(), **bright(image("corals", repeat=True)), **SOLID),
            *treasure(),
            thing("Fish", (0.0, height, 5.4), scale=size(bounds(shoal(SHOALS))[1]), **model("Fish"),
                  **bright(image("fish", repeat=True)), **animated(TURNING, 0.3)),
            placed(JELLYFISH_PREFAB, floating_jellyfish(), (2.6, 2.4, 4.0)),
            words("Score", *view, -0.58, 2.9, "Press P to play", 40, white, BELL_SIZE, parent=2),
            words("Hint", *view, -1.28, 2.36, "Gather pearls, find the chest: A D", 20, white, BELL_SIZE, parent=2)]


# The second scene: a morning above the reef.

REEF_CAMERA, REEF_PITCH = (0.0, 1.6, -9.6), -0.04


def lane(at, half):
    """Walls before and behind the bell that nobody sees keep it in the plane of the game."""
    x, y, z = at
    return [thing(f"Glass {side}", (x, y, z + away), rotation=BEHIND, scale=(*half, 1.0), **model("Square"), **SOLID)
            for side, away in (("front", -0.02 - LANE), ("back", 0.02 + LANE))]


def spawner(side, x, top, half):
    """The whole of its pane must be free before another star appears above it: so they come one by one."""
    return thing(f"Star fall {side}", (x, top - half, 0.0), rotation=BEHIND, scale=(2.7, half, 1.0), **model("Square"),
                 scripts=("PlanePrefabSpawner",), spawner_prefab=STAR_PREFAB)


def second_scene():
    blue = text_color(0, 40, 72)
    view = (REEF_CAMERA, REEF_PITCH)
    sand = thing("Sand", (0.0, SAND - 2.0, 6.0), scale=(40.0, 2.0, 15.0), **image("sand", repeat=True))
    banks = [thing(f"Reef {side}", (x, SAND + 1.6, 0.4), rotation=(0.0, turn, 0.0), scale=(1.7, 2.6, 1.8),
                   **model("Boulder"), **image("reef", repeat=True), **SOLID)
             for side, x, turn in (("left", -8.6, 0.0), ("right", 8.6, math.pi))]
    return [camera(REEF_CAMERA, REEF_PITCH, 0x6FC8C0), sunlight((-3.0, 8.0, -4.0), 2.75),
            diving_bell((0.0, -1.6, 0.0), gravity_strength=0.0, collect_prefab=STAR_PREFAB),
            thing("Water", (0.0, 6.0, 18.0), scale=(36.0, 36.0, 1.0), **model("Square"), **image("lagoon")),
            sand, *banks, scenery("Reef behind", "ReefRocks", reef_rocks(), **image("reef", repeat=True)),
            *lane((0.0, 2.0, 0.0), (9.0, 9.0)),
            scenery("Kelp", "ReefKelp", reef_kelp(), **bright(image("kelp", repeat=True))),
            scenery("Corals", "ReefCorals", reef_corals(), **bright(image("corals", repeat=True))),
            placed(SHOAL_PREFAB, circling_shoal(), (1.0, 2.2, 6.4), 0.4),
            placed(BUBBLES_PREFAB, rising_bubbles(), (-5.6, -3.0, 1.6)),
            placed(JELLYFISH_PREFAB, floating_jellyfish(), (-3.6, 3.4, 4.6)),
            spawner("left", -3.3, 8.6, 5.6), spawner("right", 3.3, 9.4, 6.0),
            words("Score", *view, -0.58, 2.9, "Press P to play", 40, blue),
            words("Hint", *view, -0.88, 2.36, "Catch the starfish: A D", 20, blue)]


if __name__ == "__main__":
    project = Project("Dive")
    project.prefab(PEARL_PREFAB, grown_pearl())
    project.prefab(STAR_PREFAB, star())
    project.prefab(JELLYFISH_PREFAB, floating_jellyfish())
    project.prefab(SHOAL_PREFAB, circling_shoal())
    project.prefab(BUBBLES_PREFAB, rising_bubbles())
    project.scene("Files\\Scenes\\Reef.scene", second_scene())
    project.first_scene("Files\\Scenes\\Main.scene", main_scene())
    project.blueprint("Files\\Blueprints\\Dive.blueprint", [
        ("Event BeginPlay", 130, 130), ("Print String", 420, 130), ("Branch", 710, 220), ("Print String", 1000, 130)])
    project.player_script()
