#!/usr/bin/env python3
"""The staged program in a real window."""

import os
import shutil
import subprocess
import sys
import tempfile

from program import HUB_TITLE, ROOT, STAGE, Picture, check, output_of, run_tests, running, wait_for

CLIENT_SIZE = (1360, 820)
# Where nothing of the sample project moves: not the coins, the falling crates, and not the boats, which come by along
# the whole horizon.
# How much of each must be equal: the eye hangs on the walker, who falls and is stopped in every frame, so that his
# height differs in its last bit with the frame's length, and that moves some points of a texture by a texel.
STILL_PARTS = {
    "score": ((560, 60, 760, 150), 0.999),
    "model of the lighthouse": ((500, 192, 545, 335), 0.99),
    "trees on the lawn": ((100, 345, 300, 440), 0.85),
    "floor and the walker": ((380, 430, 920, 820), 0.85),
}


def the_program_starts_with_the_project_hub():
    with running() as program:
        program.picture().save("hub_start")
        check(program.title() == HUB_TITLE, f"the title is '{program.title()}'")
        check(program.client_size() == CLIENT_SIZE, f"the client size is {program.client_size()}")


def beside_a_project_the_program_starts_as_its_game_with_model_textures_and_text():
    with tempfile.TemporaryDirectory(prefix="zel_game_", dir=os.path.join(ROOT, "build")) as folder:
        shutil.copytree(os.path.join(STAGE, "Project"), folder, dirs_exist_ok=True)
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), os.path.join(folder, "ZelGame.exe"))
        with running(folder, "ZelGame.exe") as program:
            program.picture().save("game_start")
            check(program.title() == "ZelGame", f"the title is '{program.title()}'")
            check(program.client_size() == CLIENT_SIZE, f"the client size is {program.client_size()}")
            expected = Picture.of_file(os.path.join(ROOT, "docs", "images", "game.png"))
            picture = program.picture()
            for name, (part, least) in STILL_PARTS.items():
                share = picture.share_equal_to(expected, part)
                check(share > least, f"only {share:.4f} of the {name} is as in docs/images/game.png")


def the_picture_follows_every_size_down_to_one_pixel_and_back():
    with running() as program:
        before = program.picture()
        for width, height in ((800, 600), (320, 200), (1, 1), (1, 700), (1500, 1), CLIENT_SIZE):
            program.resize(width, height)
            if min(width, height) >= 200:
                wait_for(lambda size=(width, height): program.client_size() == size, f"{width} x {height} pixels")
                wait_for(lambda: not program.picture().is_blank(), f"a picture at {width} x {height}")
            else:
                wait_for(lambda old=before: program.client_size() != (old.width, old.height), "a tiny size")
            check(program.process.poll() is None, f"the program ended at {width} x {height}")
        wait_for(lambda: program.picture().share_equal_to(before) > 0.99, "the picture of before")
        program.picture().save("editor_after_resizing")


def a_minimised_window_comes_back_with_its_picture():
    with running() as program:
        before = program.picture()
        subprocess.run(["xdotool", "windowminimize", program.window], check=True)
        wait_for(lambda: b"Iconic" in output_of("xprop", "-id", program.window, "WM_STATE"), "the minimised state")
        program.focus()
        wait_for(lambda: b"Normal" in output_of("xprop", "-id", program.window, "WM_STATE"), "the normal state")
        wait_for(lambda: program.picture().share_equal_to(before) > 0.99, "the picture of before")


def escape_ends_the_program():
    with running() as program:
        program.press("Escape")
        check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")


def alt_and_f4_end_the_program():
    with running() as program:
        program.press("alt+F4")
        check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")


def after_alt_and_f10_the_program_still_gets_the_next_key():
    for key in ("F10", "Alt_L", "alt+f"):  # in the system's menu the first Escape would only close the menu
        with running() as program:
            program.press(key)
            program.press("Escape")
            check(program.exit_code() == 0, f"after {key} the exit code is {program.process.returncode}")


def libraries_planted_beside_the_program_are_not_loaded():
    with tempfile.TemporaryDirectory(prefix="zel_planted_", dir=os.path.join(ROOT, "build")) as folder:
        planted = os.path.join(folder, "gdiplus.dll")
        subprocess.run(["x86_64-w64-mingw32-g++-posix", "-shared", "-s", "-o", planted,
                        os.path.join(ROOT, "tests/end_to_end/planted_library.cpp")], check=True)
        for name in ("dwmapi.dll", "uxtheme.dll", "version.dll", "winmm.dll", "windowscodecs.dll"):
            shutil.copy(planted, os.path.join(folder, name))
        shutil.copytree(os.path.join(STAGE, "assets"), os.path.join(folder, "assets"))
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), folder)
        with running(folder) as program:
            program.press("Escape")
            check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        the_program_starts_with_the_project_hub,
        beside_a_project_the_program_starts_as_its_game_with_model_textures_and_text,
        the_picture_follows_every_size_down_to_one_pixel_and_back,
        a_minimised_window_comes_back_with_its_picture,
        escape_ends_the_program,
        alt_and_f4_end_the_program,
        after_alt_and_f10_the_program_still_gets_the_next_key,
        libraries_planted_beside_the_program_are_not_loaded,
    ]) else 1)
