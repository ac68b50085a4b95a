#!/usr/bin/env python3
"""Makes the scenes, prefabs and other text files of the sample project: ./make_scenes.py

"Main" is a little game: a walker collects the coins that appear on a square. In "Level2" a treasure waits behind
hedges."""
import math

from sample_files import (
    BOUNCING, PULSING, SOLID, TURNING, Project, animated, box, camera, entity, glowing, group, image, in_view, mesh,
    model, placed, shiny, size, sunlight, text, text_color, thing, tint)

COIN_PREFAB = "Files\\Prefabs\\Coin.prefab"
TREE_PREFAB = "Files\\Prefabs\\Tree.prefab"
LAMP_PREFAB = "Files\\Prefabs\\Lamp.prefab"


# Prefabs.

def coin():
    """A foot, for what appears on a spawner stands there by its origin, and the coin above it."""
    gold = thing("Gold", (0.0, 1.6, 0.0), rotation=(math.pi / 2, 0.0, 0.0), **model("Coin"),
                 **shiny(image("gold")), **animated(TURNING, 2.0))
    return thing("Coin", (0.0, 0.0, 0.0), scale=size(0.4), children=[gold], **model("Coin"), **image("stones"))


def tree():
    crowns = [thing(f"Crown {i + 1}", (0.0, height, 0.0), rotation=(0.0, 0.7 * i, 0.0), scale=size(half, tall),
                    **mesh("Pyramid"), **image("leaves"))
              for i, (height, half, tall) in enumerate([(1.5, 1.15, 0.75), (2.5, 0.9, 0.7), (3.4, 0.62, 0.65)])]
    trunk = thing("Trunk", (0.0, 0.5, 0.0), scale=size(0.22, 0.5), **mesh("Cylinder"), **image("planks"), **SOLID)
    return group("Tree", (0.0, 0.0, 0.0), children=[trunk, *crowns])


def lamp():
    post = thing("Post", (0.0, 0.8, 0.0), scale=size(0.07, 0.8), **mesh("Cylinder"), **tint(20, 24, 40),
                 roughness=0.5, gloss=0.4, **SOLID)
    globe = thing("Globe", (0.0, 1.75, 0.0), scale=size(0.2), **mesh("Sphere"),
                  **glowing(tint(255, 255, 90)))
    return group("Lamp", (0.0, 0.0, 0.0), children=[post, globe])


# What both scenes have.

WALKER_SIZE = 0.6
CAMERA, CAMERA_PITCH = (0.0, 3.9, -6.4), -0.3  # from the walker
LIGHT = (-4.0, 7.0, 2.0)


def beside_walker(x, y, z):
    """The place of a child of the walker, which is scaled with it."""
    return (x / WALKER_SIZE, y / WALKER_SIZE, z / WALKER_SIZE)


def words(name, right, up, shown, pixels, color):
    """A text that stays where it is in the walker's view."""
    return text(name, beside_walker(*in_view(CAMERA, CAMERA_PITCH, right, up)), shown, pixels, **color)


def following_camera(sky):
    """It hangs on the walker, the object behind it and the light."""
    return camera(beside_walker(*CAMERA), CAMERA_PITCH, sky, parent=2)


def walker(at, hint, color, **rules):
    """The player. W walks away from the camera."""
    red = shiny(tint(255, 30, 0))
    return thing(
        "Walker", at, scale=size(WALKER_SIZE), **mesh("Capsule"), **shiny(tint(0, 110, 255)),
        has_collision=1, has_gravitation=1, scripts=("PlayerController", "CollectOnTouch"), children=[
            thing("Cap", (0.0, 0.8, 0.0), scale=size(0.66, 0.42), **mesh("Sphere"), **red),
            thing("Brim", (0.0, 0.75, 0.55), scale=size(0.4, 0.06, 0.4), **mesh("Cylinder"), **red),
            thing("Backpack", (0.0, 0.1, -0.65), scale=size(0.36, 0.38, 0.2), **image("crate")),
            words("Score", -0.55, 2.9, "Score: 0", 40, color),
            words("Hint", -0.93, 2.4, hint, 18, color),
        ], **rules)


# The first scene: an island with a square, a lighthouse, and a boat that sails around.

def surroundings():
    sea = thing("Sea", (0.0, -0.8, 0.0), scale=size(95.0), **mesh("Plane"), **image("water"))
    beach = thing("Beach", (0.0, -0.6, 5.0), scale=size(19.0, 0.4, 19.0), **mesh("Cylinder"),
                  **image("sand", repeat=True))
    lawn = thing("Lawn", (0.0, -0.5, 5.0), scale=size(17.0, 0.44, 17.0), **mesh("Cylinder"),
                 **image("grass", repeat=True), **SOLID)
    return [sea, beach, lawn]


def square():
    """Its floor brings forth the coins. The walls keep the walker in."""
    floor = thing("Square", (0.0, 0.0, 3.5), scale=(5.5, 1.0, 4.5), **mesh("Plane"), **image("tiles", repeat=True),
                  **SOLID, scripts=("PlanePrefabSpawner",), spawner_prefab=COIN_PREFAB)
    walls = [box("Wall left", (-8.3, 0.22, 3.0), (0.3, 0.28, 7.3), "stones"),
             box("Wall right", (8.3, 0.22, 3.0), (0.3, 0.28, 7.3), "stones"),
             box("Wall back", (0.0, 0.22, 10.6), (8.6, 0.28, 0.3), "stones"),
             box("Wall front", (0.0, 0.22, -4.6), (8.6, 0.28, 0.3), "stones")]
    deck = box("Platform deck", (0.0, 0.05, -2.7), (2.4, 0.15, 1.2), "planks")
    return [floor, *walls, deck]


def lighthouse():
    mount = group("Lamp room", (0.0, 0.64, 0.0), scale=size(0.2), children=[
        thing("Beacon", (0.0, 0.0, 0.0), **mesh("Sphere"), **glowing(tint(255, 255, 60)),
              **animated(PULSING, 0.8))])
    return thing("Lighthouse", (-6.5, 4.4, 16.0), scale=size(4.5), children=[mount], **model("Lighthouse"),
                 **tint(255, 246, 230), roughness=1.0, gloss=0.6)


def boat():
    """Hangs on a turning point, so that it sails in a circle."""
    boat_ = thing("Boat", (29.0, -0.35, 0.0), rotation=(0.0, math.pi, 0.0), scale=size(2.4), **model("Hull"),
                  **tint(170, 70, 20), children=[
                      thing("Mast", (0.0, 1.3, -0.2), scale=size(0.05, 1.3), **mesh("Cylinder"), **tint(120, 60, 20)),
                      thing("Sail", (0.0, 1.3, -0.2), scale=size(0.06, 0.9, 0.6), **mesh("Pyramid"), **image("sail"))])
    return entity("Boat's course", (0.0, 0.0, 8.0), rotation=(0.0, -1.52, 0.0), children=[boat_],
                  **animated(TURNING, 0.06))


def things_to_see():
    pedestal = box("Platform", (0.0, 0.3, 9.4), (0.6, 0.3, 0.6), "stones")
    pearl = group("Pearl stand", (0.0, 1.15, 9.4), scale=size(0.5), children=[
        thing("Pearl", (0.0, 0.0, 0.0), **mesh("Sphere"), **shiny(tint(255, 90, 255)),
              **animated(PULSING, 1.5))])
    ball = thing("Ball", (-6.9, 0.7, 8.9), scale=size(0.55), **mesh("Sphere"), **image("sail"), **SOLID,
                 **animated(BOUNCING, 1.2))
    crates = [thing(f"Crate {i + 1}", at, rotation=(0.0, yaw, 0.0), scale=size(half), **image("crate"),
                    has_rigidbody=1, mass=mass, **SOLID)
              for i, (at, yaw, half, mass) in enumerate([
                  ((7.0, 0.7, 8.6), 0.0, 0.7, 2.0), ((6.8, 3.4, 8.8), 0.35, 0.55, 1.5),
                  ((7.1, 6.4, 8.5), -0.5, 0.42, 1.0)])]
    return [pedestal, pearl, ball, *crates]


def main_scene():
    blue = text_color(18, 44, 92)
    trees = [placed(TREE_PREFAB, tree(), at, yaw) for at, yaw in [
        ((-10.6, -0.06, 8.5), 0.3), ((-12.4, -0.06, 4.6), 1.1), ((-9.9, -0.06, 12.6), 2.0),
        ((9.8, -0.06, 12.8), 0.6), ((12.0, -0.06, 9.4), 1.7), ((6.2, -0.06, 14.6), 2.4), ((10.9, -0.06, 4.4), 0.9)]]
    lamps = [placed(LAMP_PREFAB, lamp(), at) for at in [
        (-9.1, -0.06, -1.2), (9.1, -0.06, -1.2), (-3.4, -0.06, 9.6), (3.4, -0.06, 9.6)]]
    coins = [placed(COIN_PREFAB, coin(), at) for at in [(-6.9, 0.04, 2.0), (6.9, 0.04, 4.0)]]
    return [following_camera(0xA9D4F2), sunlight(LIGHT, 2.5),
            walker((0.0, 0.861, -2.7), "Collect the coins: W A S D", blue, collect_prefab=COIN_PREFAB),
            *surroundings(), *square(), lighthouse(), boat(), *things_to_see(), *trees, *lamps, *coins]


# The second scene: an evening among hedges.

def second_scene():
    def hedge(number, at, half):
        return box(f"Hedge {number}", at, half, "leaves")

    hedges = [hedge(i + 1, (x, 0.7, z), (half_x, 0.7, half_z)) for i, (x, z, half_x, half_z) in enumerate([
        (-8.0, 6.0, 0.5, 10.0), (8.0, 6.0, 0.5, 10.0), (0.0, 15.6, 7.6, 0.5),
        (-2.4, 1.0, 5.2, 0.4), (2.4, 5.4, 5.2, 0.4), (-2.4, 9.8, 5.2, 0.4)])]
    hedges.append(hedge(len(hedges) + 1, (0.0, 0.3, -3.6), (7.6, 0.3, 0.5)))
    lawn = thing("Lawn", (0.0, -0.5, 6.0), scale=(30.0, 0.5, 30.0), **image("grass", repeat=True), **SOLID)
    treasure = thing("Treasure", (0.0, 1.5, 12.8), scale=size(0.8), rotation=(math.pi / 2, 0.0, 0.0), **model("Coin"),
                     **shiny(image("gold")), **animated(TURNING, 1.5))
    lamps = [placed(LAMP_PREFAB, lamp(), at) for at in [
        (-6.8, 0.0, -2.4), (6.8, 0.0, 3.2), (-6.8, 0.0, 7.6), (-1.6, 0.0, 14.2), (1.6, 0.0, 14.2)]]
    trees = [placed(TREE_PREFAB, tree(), at, yaw) for at, yaw in [
        ((-11.0, 0.0, 10.0), 0.2), ((-10.4, 0.0, 16.0), 1.3), ((10.6, 0.0, 12.0), 0.8), ((11.4, 0.0, 17.0), 1.9),
        ((-3.0, 0.0, 19.0), 0.5), ((4.0, 0.0, 18.4), 2.2)]]
    return [following_camera(0xF4BE92), sunlight(LIGHT, 2.1),
            walker((-5.0, 0.663, -1.6), "Find the treasure: W A S D", text_color(92, 40, 24),
                   collect_target="Treasure"),
            lawn, *hedges, treasure, *lamps, *trees]


if __name__ == "__main__":
    project = Project("Project")
    project.prefab(COIN_PREFAB, coin())
    project.prefab(TREE_PREFAB, tree())
    project.prefab(LAMP_PREFAB, lamp())
    project.scene("Files\\Scenes\\Level2.scene", second_scene())
    project.first_scene("Files\\Scenes\\Main.scene", main_scene())
    project.blueprint("Files\\Blueprints\\Coins.blueprint", [
        ("Event BeginPlay", 130, 130), ("Branch", 420, 130), ("Print String", 710, 220)])
    project.player_script()
