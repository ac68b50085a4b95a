#!/usr/bin/env python3
"""The sample projects played in the real window, in the editor and as the built game.

The score is read from the scene that the game saves: nothing else tells it to the outside."""

import contextlib
import os
import shutil
import sys
import tempfile
import time

from program import ROOT, STAGE, check, run_tests, running, wait_for

SCENE = os.path.join("Files", "Scenes", "Main.scene")
COIN = "Files\\Prefabs\\Coin.prefab"
SPEED = 4  # of the walker and of the bell, in units per second
SQUARE = ((-5.5, 5.5), (-1, 8))  # the floor on which the coins appear, along x and z

# In the editor's window at its first size.
SCORE = (560, 80, 760, 140)
ABOVE_THE_CONSOLE = (0, 0, 1360, 688)

# The columns of an object line that are read here.
NAME, X, Y, Z, ACTIVE, PREFAB_SOURCE, TEXT = 1, 2, 3, 4, 48, 51, 59


@contextlib.contextmanager
def copy_of_the_sample(folder_name="", sample="Project"):
    """A new folder under build/ with the program, and with a sample project beside or below it."""
    with tempfile.TemporaryDirectory(prefix="zel_played_", dir=os.path.join(ROOT, "build")) as folder:
        shutil.copytree(os.path.join(STAGE, sample), os.path.join(folder, folder_name), dirs_exist_ok=True)
        shutil.copytree(os.path.join(STAGE, "assets"), os.path.join(folder, "assets"))
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), folder)
        yield folder


def content(*parts):
    with open(os.path.join(*parts), "rb") as file:
        return file.read()


def objects_in(scene):
    lines = scene.decode("utf-8-sig").split("\r\n")
    return [line.split("\t") for line in lines if line.startswith("O\t")]


def saved_objects(program, folder):
    """The objects of the running game, which saves them."""
    path = os.path.join(folder, SCENE)
    os.remove(path)  # a whole file takes its place
    program.press("ctrl+s")
    wait_for(lambda: os.path.exists(path), "a saved scene")
    return objects_in(content(path))


def named(objects, name):
    return next(fields for fields in objects if fields[NAME] == name)


def score_in(objects):
    shown = named(objects, "Score")[TEXT]
    check(shown.startswith("Score: "), f"the score is shown as '{shown}'")
    return int(shown.removeprefix("Score: "))


def appeared_coins(objects, placed):
    """Those that came after the objects of the file, which are `placed` in number."""
    return [fields for fields in objects[placed:] if fields[NAME] == "Coin" and fields[PREFAB_SOURCE] == COIN]


def place(fields):
    return float(fields[X]), float(fields[Z])


def spots(count, floor=SQUARE):
    """The first places of coins on a floor, from the rule of the generator."""
    state = 0x9E3779B9

    def number(low, high):
        nonlocal state
        state = (state * 1664525 + 1013904223) % 2**32
        return low + (state >> 8) / 16777215 * (high - low)

    return [(number(*floor[0]), number(*floor[1])) for _ in range(count)]


def walk(program, key, back_key, distance):
    """Along one axis, about as far as `distance`; less where the machine is slow."""
    if abs(distance) < 0.2:
        return
    with program.holding(key if distance > 0 else back_key):
        time.sleep(abs(distance) / SPEED)


def the_walker_collects_coins_in_the_built_game_where_the_generator_puts_them():
    with copy_of_the_sample() as folder:
        os.rename(os.path.join(folder, "ZelEngine.exe"), os.path.join(folder, "ZelGame.exe"))
        placed = len(objects_in(content(folder, SCENE)))
        with running(folder, "ZelGame.exe") as game:
            objects = saved_objects(game, folder)
            check(score_in(objects) == 0, "the game begins with a score")
            end = time.monotonic() + 180
            while score_in(objects) < 3:
                check(time.monotonic() < end, f"after 180 s the score is {score_in(objects)}")
                coins = [coin for coin in appeared_coins(objects, placed) if coin[ACTIVE] == "1"]
                check(len(coins) == 1, f"{len(coins)} coins wait on the square")
                (x, z), (coin_x, coin_z) = place(named(objects, "Walker")), place(coins[0])
                walk(game, "w", "s", coin_z - z)
                walk(game, "d", "a", coin_x - x)
                objects = saved_objects(game, folder)
            game.picture().save("game_with_score")

        coins = appeared_coins(objects, placed)
        taken = [coin for coin in objects if coin[NAME] == "Coin" and coin[ACTIVE] == "0"]
        check(score_in(objects) == len(taken), f"the score is {score_in(objects)} for {len(taken)} coins")
        for (x, z), expected in zip(map(place, coins), spots(len(coins))):
            far = max(abs(x - expected[0]), abs(z - expected[1]))
            check(far < 1e-4, f"a coin appeared at {x}, {z} and not at {expected}")


def playing_in_the_editor_shows_the_score_saves_nothing_and_ends_with_the_scene_of_before():
    with copy_of_the_sample("Project") as folder:
        project = os.path.join(folder, "Project")
        files = [os.path.join(project, name) for name in (SCENE, "project.zel")]
        stored = [content(file) for file in files]
        with running(folder) as editor:
            editor.open_first_project()
            before = editor.picture()
            editor.press("p")
            wait_for(lambda: editor.picture().share_equal_to(before) < 0.9, "the view of the game's camera")
            started = editor.picture()
            with editor.holding("d"):
                time.sleep(4)  # to the wall, and on against it
            check(editor.picture().share_equal_to(started, SCORE) == 1, "the score changed without a coin")
            with editor.holding("w"):  # along the wall, past a coin
                wait_for(lambda: editor.picture().share_equal_to(started, SCORE) < 1, "another score")
            editor.picture().save("editor_with_score")

            editor.press("ctrl+s")
            editor.press("p")
            wait_for(lambda: editor.picture().share_equal_to(before, ABOVE_THE_CONSOLE) == 1, "the scene of before")
            check([content(file) for file in files] == stored, "saving was not refused in Play mode")

            for file in files:
                os.remove(file)
            editor.press("ctrl+s")
            wait_for(lambda: all(map(os.path.exists, files)), "the saved project")
            check([content(file) for file in files] == stored, "the scene differs from that of before")


def hold_until(program, folder, key, reached, mover="Diving bell"):
    """Holds a key down, and lets go of it now and then to save the game and look at its objects."""
    end = time.monotonic() + 60
    while True:
        with program.holding(key):
            time.sleep(2)
        objects = saved_objects(program, folder)
        if reached(objects):
            return objects
        check(time.monotonic() < end, f"60 s of '{key}' led {mover} to {named(objects, mover)[X:Z]}")


def sunk_to(height):
    return lambda objects: float(named(objects, "Diving bell")[Y]) < height


def the_second_sample_opens_from_the_hub_and_its_bell_dives_to_the_chest():
    with copy_of_the_sample("Project", "Dive") as folder:
        project = os.path.join(folder, "Project")
        with running(folder) as editor:
            editor.open_first_project()
            check(editor.title() == "ZelEngine - Project", f"the title is '{editor.title()}'")
            editor.picture().save("editor_with_dive")
        shutil.copy(os.path.join(folder, "ZelEngine.exe"), os.path.join(project, "ZelGame.exe"))
        with running(project, "ZelGame.exe") as game:
            for key, height in (("d", -7.5), ("a", -14.5), ("d", -21.7), ("a", -29)):  # three ledges and the ground
                hold_until(game, project, key, sunk_to(height))
            objects = hold_until(game, project, "d", lambda objects: named(objects, "Lid")[ACTIVE] == "0")
            game.picture().save("game_with_chest")
        taken = [fields for fields in objects if fields[NAME] in ("Pearl", "Lid") and fields[ACTIVE] == "0"]
        check(len(taken) > 1, "no pearl was taken")
        check(score_in(objects) == len(taken), f"the score is {score_in(objects)} for {len(taken)} things")


def in_the_third_sample_the_snail_goes_to_its_mushroom_while_the_hedgehog_stands_at_the_hedge():
    with copy_of_the_sample(sample="Harvest") as folder:
        os.rename(os.path.join(folder, "ZelEngine.exe"), os.path.join(folder, "ZelGame.exe"))
        with running(folder, "ZelGame.exe") as game:
            objects = hold_until(game, folder, "d", lambda objects: named(objects, "Mushroom")[ACTIVE] == "0", "Snail")
            game.picture().save("game_with_snail")
        taken = [fields for fields in objects if fields[NAME] in ("Apple", "Mushroom") and fields[ACTIVE] == "0"]
        check(score_in(objects) == len(taken), f"the score is {score_in(objects)} for {len(taken)} things")
        check(float(named(objects, "Hedgehog")[X]) > 8, "the hedgehog is not at the right hedge")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        the_walker_collects_coins_in_the_built_game_where_the_generator_puts_them,
        playing_in_the_editor_shows_the_score_saves_nothing_and_ends_with_the_scene_of_before,
        the_second_sample_opens_from_the_hub_and_its_bell_dives_to_the_chest,
        in_the_third_sample_the_snail_goes_to_its_mushroom_while_the_hedgehog_stands_at_the_hedge,
    ]) else 1)
