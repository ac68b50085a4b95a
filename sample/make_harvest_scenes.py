#!/usr/bin/env python3
"""Makes the scene, prefabs and other text files of the third sample project: ./make_harvest_scenes.py

On an autumn evening a hedgehog rides down on a bale of hay, gathers apples between the hedges, and leads a snail to its
mushroom."""
from make_harvest_assets import apple, ground, hedgehog, lanterns, mushroom, snail, trees
from sample_files import (
    BOUNCING, SOLID, Project, animated, bounds, box, camera, glowing, image, in_view, mesh, model, placed, scenery,
    size, sunlight, text, text_color, thing)

APPLE_PREFAB = "Files\\Prefabs\\Apple.prefab"
SNAIL_PREFAB = "Files\\Prefabs\\Snail.prefab"
MUSHROOM_PREFAB = "Files\\Prefabs\\Mushroom.prefab"


def bright(look):
    return look | {"roughness": 0.9, "gloss": 0.5}


# Prefabs. Each is one object, whose place is its middle.

def prefab(name, shape, large, **values):
    return thing(name, (0.0, 0.0, 0.0), scale=size(bounds(shape)[1] * large), **model(name), **bright(image(name)),
                 **values)


def jumping_apple():
    """It jumps out of what it appeared on."""
    return prefab("Apple", apple(), 0.36, **animated(BOUNCING, 0.8))


def following_snail():
    """A player too, but a heavy one: it goes slowly wherever the hedgehog's keys lead."""
    return prefab("Snail", snail(), 0.8, has_rigidbody=1, mass=5.0, drag=4.0, **SOLID,
                  scripts=("PlayerController", "CollectOnTouch"), collect_target="Mushroom")


def snails_mushroom():
    return prefab("Mushroom", mushroom(), 0.62)


def standing(prefab_, tree, shape, large, at):
    """An instance whose foot is there."""
    return placed(prefab_, tree, (at[0], at[1] + (bounds(shape)[0][1] - min(y for _, y, _ in shape[0])) * large, at[2]))


# The scene.

HEDGEHOG_SIZE = 0.6
CAMERA, CAMERA_PITCH = (0.0, 4.3, -6.6), -0.36  # from the hedgehog
LIFT = 1.4  # how high the bale begins


def player(at):
    half = bounds(hedgehog())[1] * HEDGEHOG_SIZE
    return thing("Hedgehog", at, scale=size(half), **model("Hedgehog"), **bright(image("Hedgehog")), **SOLID,
                 has_gravitation=1, scripts=("PlayerController", "CollectOnTouch"), collect_prefab=APPLE_PREFAB), half


def words(name, measure, right, up, shown, pixels):
    """A text that stays where it is in the hedgehog's view."""
    at = tuple(c / measure for c in in_view(CAMERA, CAMERA_PITCH, right, up))
    return text(name, at, shown, pixels, parent=2, **text_color(255, 240, 206))


def hedges():
    """Around the garden and through it. Behind the last one the snail has a lane of its own."""
    return [box(f"Hedge {name}", (x, high, z), (half_x, high, half_z), "beech")
            for name, x, z, half_x, half_z, high in [
                ("left", -9.6, 5.0, 0.5, 10.0, 0.6), ("right", 9.6, 5.0, 0.5, 10.0, 0.6),
                ("back", 0.0, 14.6, 9.1, 0.4, 0.6), ("front", 0.0, -4.7, 9.1, 0.3, 0.35),
                ("1", -2.9, 3.0, 6.2, 0.35, 0.5), ("2", 2.9, 8.0, 6.2, 0.35, 0.5), ("3", 0.0, 11.4, 9.1, 0.35, 0.3)]]


def main_scene():
    shape = hedgehog()
    half_height = (max(y for _, y, _ in shape[0]) - min(y for _, y, _ in shape[0])) / 2 * HEDGEHOG_SIZE
    hero, measure = player((0.0, LIFT + 0.3 + half_height + 0.001, 0.6))
    eye = tuple(c / measure for c in CAMERA)
    return [camera(eye, CAMERA_PITCH, 0x342E6E, parent=2), sunlight((-4.0, 7.0, 2.0), 2.8), hero,
            thing("Sky", (0.0, 14.0, 62.0), rotation=(0.44, 0.0, 0.0), scale=(88.0, 27.0, 1.0), **model("Square"),
                  **image("sky") | {"roughness": 1.0, "gloss": 0.6}),
            scenery("Meadow", "Meadow", ground(), **image("meadow", repeat=True), **SOLID),
            thing("Hay lift", (0.0, LIFT, 0.6), scale=(1.3, 0.3, 1.3), **image("hay", repeat=True), **SOLID,
                  has_rigidbody=1, mass=2.0, drag=2.0, gravity_strength=0.5),
            *hedges(),
            scenery("Trees", "Trees", trees(), **bright(image("Trees"))),
            scenery("Lanterns", "Lanterns", lanterns(), **glowing(image("Lanterns"))),
            thing("Blanket", (0.0, 0.03, 5.5), scale=(2.6, 1.0, 1.5), **mesh("Plane"), **image("blanket", repeat=True),
                  **SOLID, scripts=("PlanePrefabSpawner",), spawner_prefab=APPLE_PREFAB),
            standing(SNAIL_PREFAB, following_snail(), snail(), 0.8, (-4.0, 0.0, 13.0)),
            standing(MUSHROOM_PREFAB, snails_mushroom(), mushroom(), 0.62, (4.6, 0.0, 13.0)),
            placed(APPLE_PREFAB, jumping_apple(), (6.6, 0.34, 0.6)),
            words("Score", measure, -0.52, 2.75, "Press P to play", 36),
            words("Hint", measure, -1.26, 1.95, "Apples: W A S D. The snail goes where you go.", 18)]


if __name__ == "__main__":
    project = Project("Harvest")
    project.prefab(APPLE_PREFAB, jumping_apple())
    project.prefab(SNAIL_PREFAB, following_snail())
    project.prefab(MUSHROOM_PREFAB, snails_mushroom())
    project.first_scene("Files\\Scenes\\Main.scene", main_scene())
    project.blueprint("Files\\Blueprints\\Harvest.blueprint", [
        ("Event BeginPlay", 130, 130), ("Branch", 420, 130), ("Print String", 710, 130)])
    project.player_script()
