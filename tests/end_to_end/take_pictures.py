#!/usr/bin/env python3
"""Takes the pictures of docs/images anew, from the staged program:
tests/end_to_end/with_display.sh tests/end_to_end/in_wine.sh tests/end_to_end/take_pictures.py"""

import os
import shutil
import tempfile

from program import ROOT, STAGE, running

IMAGES = os.path.join(ROOT, "docs", "images")


def take(program, name):
    shutil.copy(program.picture().save(name), os.path.join(IMAGES, name + ".png"))


if __name__ == "__main__":
    os.makedirs(IMAGES, exist_ok=True)
    with running() as editor:
        take(editor, "hub")
        editor.open_first_project()
        editor.steady_pixels()
        take(editor, "editor")
    with tempfile.TemporaryDirectory(prefix="zel_game_", dir=os.path.join(ROOT, "build")) as game:
        shutil.copytree(os.path.join(STAGE, "Project"), game, dirs_exist_ok=True)
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), os.path.join(game, "ZelGame.exe"))
        with running(game, "ZelGame.exe") as program:
            take(program, "game")
