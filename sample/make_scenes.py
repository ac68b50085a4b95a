#!/usr/bin/env python3
"""Makes the scenes, prefabs and other text files of the sample project: ./make_scenes.py

"Main" is a little game: a walker collects the coins that appear on a square. In "Level2" a treasure waits behind
hedges. Each scene has at most 21 objects, which is as many as the Hierarchy shows in the window's first size."""
import math

from make_assets import BOATS_AT, FAR_TREES, TREES, boats, cap, lamp, lights, planted, sea, standing_coin, tree
from sample_files import (
    SOLID, TURNING, Project, animated, bounds, box, camera, image, in_view, mesh, model, placed, scenery, shiny, size,
    sunlight, text, text_color, thing, tint)

COIN_PREFAB = "Files\\Prefabs\\Coin.prefab"
TREE_PREFAB = "Files\\Prefabs\\Tree.prefab"
LAMP_PREFAB = "Files\\Prefabs\\Lamp.prefab"


# Prefabs. Each is one object, whose place is its middle.

def coin():
    """What appears on a spawner stands there by its middle, and a coin's is the foot below it."""
    return thing("Coin", (0.0, 0.0, 0.0), scale=size(0.4 * bounds(standing_coin())[1]), **model("Coin"),
                 **shiny(image("Coin")), **animated(TURNING, 2.0))


def as_prefab(name, shape, **values):
    return thing(name, (0.0, 0.0, 0.0), scale=size(bounds(shape)[1]), **model(name), **image(name) | values, **SOLID)


def standing(prefab, shape, at, yaw=0.0, **values):
    """An instance whose foot is there."""
    name = prefab.rsplit("\\", 1)[1].removesuffix(".prefab")
    middle = bounds(shape)[0][1]
    return placed(prefab, as_prefab(name, shape, **values), (at[0], at[1] + middle, at[2]), yaw)


LAMP_LOOK = {"gloss": 0.5}


# What both scenes have.

WALKER_SIZE = 0.6
CAMERA, CAMERA_PITCH = (0.0, 3.9, -6.4), -0.3  # from the walker
LIGHT = (-4.0, 7.0, 2.0)


def beside_walker(x, y, z):
    """The place of a child of the walker, which is scaled with it."""
    return (x / WALKER_SIZE, y / WALKER_SIZE, z / WALKER_SIZE)


def words(name, right, up, shown, pixels, color):
    """A text that stays where it is in the walker's view. The last objects of a scene are its texts, for what comes
    behind a text is drawn over it."""
    return text(name, beside_walker(*in_view(CAMERA, CAMERA_PITCH, right, up)), shown, pixels, parent=2, **color)


def following_camera(sky):
    """It hangs on the walker, the object behind it and the light."""
    return camera(beside_walker(*CAMERA), CAMERA_PITCH, sky, parent=2)


def walker(at, **rules):
    """The player. W walks away from the camera."""
    return thing(
        "Walker", at, scale=size(WALKER_SIZE), **mesh("Capsule"), **shiny(tint(0, 110, 255)),
        has_collision=1, has_gravitation=1, scripts=("PlayerController", "CollectOnTouch"), children=[
            scenery("Cap", "Cap", cap(), **shiny(image("Cap")))], **rules)


def shown(hint, color, right=0.0):
    """Starting the game makes "Score: 0" of the first."""
    return [words("Score", right - 0.58, 3.02, "Press P to play", 40, color),
            words("Hint", right - 0.84, 2.34, hint, 18, color)]


# The first scene: an island with a square, a lighthouse, and two boats that sail around.

def square():
    """Its floor brings forth the coins. The walls keep the walker in."""
    floor = thing("Square", (0.0, 0.0, 3.5), scale=(5.5, 1.0, 4.5), **mesh("Plane"), **image("tiles", repeat=True),
                  **SOLID, scripts=("PlanePrefabSpawner",), spawner_prefab=COIN_PREFAB)
    walls = [box("Wall left", (-8.3, 0.22, 3.0), (0.3, 0.28, 7.3), "stones"),
             box("Wall right", (8.3, 0.22, 3.0), (0.3, 0.28, 7.3), "stones"),
             box("Wall back", (0.0, 0.22, 10.6), (8.6, 0.28, 0.3), "stones"),
             box("Wall front", (0.0, 0.22, -4.6), (8.6, 0.28, 0.3), "stones")]
    return [floor, *walls]


def stack():
    return [thing(f"Crate {i + 1}", at, rotation=(0.0, yaw, 0.0), scale=size(half), **image("crate"),
                  has_rigidbody=1, mass=mass, **SOLID)
            for i, (at, yaw, half, mass) in enumerate([
                ((7.0, 0.7, 8.6), 0.0, 0.7, 2.0), ((6.8, 3.4, 8.8), 0.35, 0.55, 1.5),
                ((7.1, 6.4, 8.5), -0.5, 0.42, 1.0)])]


def main_scene():
    coins = [placed(COIN_PREFAB, coin(), at) for at in [(-6.9, 0.04, 2.0), (6.9, 0.04, 4.0)]]
    lawn = thing("Lawn", (0.0, -0.5, 5.0), scale=(17.0, 0.44, 17.0), **mesh("Cylinder"), **image("grass", repeat=True),
                 **SOLID)
    _, height, _ = bounds(boats())[0]
    fleet = thing("Boats", (BOATS_AT[0], height, BOATS_AT[2]), rotation=(0.0, -1.66, 0.0),
                  scale=size(bounds(boats())[1]), **model("Boats"), **image("Boats"), **animated(TURNING, 0.06))
    return [following_camera(0xA9D4F2), sunlight(LIGHT, 2.5),
            walker((0.0, 0.601, -2.7), collect_prefab=COIN_PREFAB),
            scenery("Sea", "Sea", sea(), **image("Sea")), lawn, *square(), fleet,
            scenery("Trees", "Trees", planted(TREES), **image("Trees")),
            scenery("Lighthouse, lamps", "Lights", lights(), **image("Lights") | {"gloss": 0.2}), *stack(), *coins,
            *shown("Collect the coins: W A S D", text_color(18, 44, 92))]


# The second scene: an evening among hedges.

def second_scene():
    def hedge(number, at, half):
        return box(f"Hedge {number}", at, half, "leaves")

    hedges = [hedge(i + 1, (x, 0.7, z), (half_x, 0.7, half_z)) for i, (x, z, half_x, half_z) in enumerate([
        (-8.0, 6.0, 0.5, 10.0), (8.0, 6.0, 0.5, 10.0), (0.0, 15.6, 7.6, 0.5),
        (-2.4, 1.0, 5.2, 0.4), (2.4, 5.4, 5.2, 0.4), (-2.4, 9.8, 5.2, 0.4)])]
    hedges.append(hedge(len(hedges) + 1, (0.0, 0.3, -3.6), (7.6, 0.3, 0.5)))
    lawn = thing("Lawn", (0.0, -0.5, 6.0), scale=(30.0, 0.5, 30.0), **image("grass", repeat=True), **SOLID)
    treasure = thing("Treasure", (0.0, 1.5, 12.8), scale=size(0.8), rotation=(math.pi / 2, 0.0, 0.0),
                     **model("Treasure"), **shiny(image("Treasure")), **animated(TURNING, 1.5))
    lamps = [standing(LAMP_PREFAB, lamp(), at, **LAMP_LOOK) for at in [
        (-6.8, 0.0, -2.4), (6.8, 0.0, 3.2), (-1.6, 0.0, 14.2)]]
    trees = [standing(TREE_PREFAB, tree(), at, yaw) for at, yaw in [
        ((-3.0, 0.0, 19.0), 0.5), ((4.0, 0.0, 18.4), 2.2)]]
    return [following_camera(0xF4BE92), sunlight(LIGHT, 2.1),
            walker((-5.0, 0.663, -1.6), collect_target="Treasure"),
            lawn, *hedges, treasure, *lamps, *trees,
            scenery("Far trees", "FarTrees", planted(FAR_TREES), **image("FarTrees")),
            *shown("Find the treasure: W A S D", text_color(92, 40, 24), right=2.4)]


if __name__ == "__main__":
    project = Project("Project")
    project.prefab(COIN_PREFAB, coin())
    project.prefab(TREE_PREFAB, as_prefab("Tree", tree()))
    project.prefab(LAMP_PREFAB, as_prefab("Lamp", lamp(), **LAMP_LOOK))
    project.scene("Files\\Scenes\\Level2.scene", second_scene())
    project.first_scene("Files\\Scenes\\Main.scene", main_scene())
    project.blueprint("Files\\Blueprints\\Coins.blueprint", [
        ("Event BeginPlay", 130, 130), ("Branch", 420, 130), ("Print String", 710, 220)])
    project.player_script()
