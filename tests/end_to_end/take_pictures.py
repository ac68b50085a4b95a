#!/usr/bin/env python3
"""Takes the pictures of docs/images anew, from the staged program:
tests/end_to_end/with_display.sh tests/end_to_end/in_wine.sh tests/end_to_end/take_pictures.py"""

import glob
import os
import shutil
import time

from program import ROOT, STAGE, running

IMAGES = os.path.join(ROOT, "docs", "images")
DRIVE = os.path.join(os.environ["WINEPREFIX"], "drive_c")  # pictures show paths, the same on every machine


def take(program, name):
    shutil.copy(program.picture().save(name), os.path.join(IMAGES, name + ".png"))


def fresh_folder(name):
    folder = os.path.join(DRIVE, name)
    shutil.rmtree(folder, ignore_errors=True)
    return folder


def remember_projects(installed, *names):
    """The Project Hub lists them in this order."""
    remembered = os.path.join(glob.glob(os.path.join(DRIVE, "users", "*", "AppData", "Local"))[0], "ZelEngine")
    os.makedirs(remembered, exist_ok=True)
    with open(os.path.join(remembered, "recent-projects.txt"), "w", encoding="utf-8", newline="\r\n") as file:
        file.writelines(f"C:\\{os.path.basename(installed)}\\{name}\n" for name in names)


def take_game(sample, seconds, name):
    """A sample project as a game, some time after its start."""
    game = fresh_folder("ZelGame")
    shutil.copytree(os.path.join(STAGE, sample), game)
    shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), os.path.join(game, "ZelGame.exe"))
    with running(game, "ZelGame.exe") as program:
        time.sleep(seconds)
        take(program, name)


if __name__ == "__main__":
    os.makedirs(IMAGES, exist_ok=True)
    installed = fresh_folder("ZelEngine")
    shutil.copytree(STAGE, installed)
    remember_projects(installed, "Dive", "Harvest", "Project")
    with running(installed, forget=False) as editor:
        take(editor, "hub")
        editor.open_first_project()
        take(editor, "editor")
    take_game("Project", 3, "game")  # until the crates lie still
    take_game("Dive", 1, "dive")  # before the bell has sunk to the first ledge
    take_game("Harvest", 1, "harvest")  # while the hedgehog rides down
