#!/usr/bin/env python3
"""Takes the pictures of docs/images anew, from the staged program:
tests/end_to_end/with_display.sh tests/end_to_end/in_wine.sh tests/end_to_end/take_pictures.py"""

import os
import shutil
import tempfile

from program import ROOT, STAGE, running

IMAGES = os.path.join(ROOT, "docs", "images")


def take(name, folder, executable):
    with running(folder, executable) as program:
        shutil.copy(program.picture().save(name), os.path.join(IMAGES, name + ".png"))


if __name__ == "__main__":
    os.makedirs(IMAGES, exist_ok=True)
    take("editor", STAGE, "ZelEngine.exe")
    with tempfile.TemporaryDirectory(prefix="zel_game_", dir=os.path.join(ROOT, "build")) as game:
        shutil.copytree(os.path.join(STAGE, "Project"), game, dirs_exist_ok=True)
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), os.path.join(game, "ZelGame.exe"))
        take("game", game, "ZelGame.exe")
