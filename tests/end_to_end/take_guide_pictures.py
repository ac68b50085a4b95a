#!/usr/bin/env python3
"""Takes the pictures of docs/guide/images anew, from the staged program: docs/shots

The first game of the guide is made here step by step, as the guide tells it, and its saved scene is checked at the
end. Everything lies on drive C of the build's own Wine, so the paths in the pictures are the same on every machine."""

import glob
import os
import shutil
import struct
import subprocess
import sys
import zlib

from program import HUB_TITLE, ROOT, STAGE, check, output_of, running, wait_for

GUIDE = os.path.join(ROOT, "docs", "guide")
IMAGES = os.path.join(GUIDE, "images")
DRIVE = os.path.join(os.environ["WINEPREFIX"], "drive_c")
INSTALLED, PROJECTS, GAMES = (os.path.join(DRIVE, name) for name in ("ZelEngine", "Projects", "Games"))
FIRST_GAME, SAMPLE = (os.path.join(PROJECTS, name) for name in ("ZelEngineProject", "Island"))
BUILT_GAME = os.path.join(GAMES, "ZelEngineProject_Build", "ZelGame.exe")

# The window at its first size, and the panels at theirs.
WIDTH, HEIGHT = 1360, 820
BOTTOM_TOP = HEIGHT - 132
INSPECTOR_LEFT = WIDTH - 320

BASIC_CARD = (1050, 280)
BUILD_BUTTON = (WIDTH - 90, 22)
HUB_BUTTON = (WIDTH - 365, 22)
FILES_TAB, CONSOLE_TAB = (60, BOTTOM_TOP + 24), (160, BOTTOM_TOP + 24)
FILES_UP, FILES_EMPTY = (36, BOTTOM_TOP + 59), (700, BOTTOM_TOP + 112)
FILES_MENU = (700, HEIGHT - 188)  # moved up into the window
EMPTY_VIEW = (420, 300)  # no object lies there
ON_INSPECTOR = (INSPECTOR_LEFT + 200, BOTTOM_TOP - 150)
NAME_BOX = (INSPECTOR_LEFT + 100, 103)
SEARCH_BOX = (INSPECTOR_LEFT + 160, BOTTOM_TOP - 100)  # while the sections above are short

TRANSFORM_TOP = 162
SHAPE_TOP = TRANSFORM_TOP + 136
AFTER_SHAPE = SHAPE_TOP + 92  # where the next section begins
VECTOR_ROWS = {"Position": 34, "Rotation": 68, "Scale": 102}


# Pictures.

def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, rgb):
    """The bytes depend on the pixels alone. A row is stored as its difference to the row above."""
    stride = width * 3
    above, rows = bytes(stride), []
    for y in range(height):
        row = rgb[y * stride:(y + 1) * stride]
        rows.append(b"\2" + bytes((a - b) & 255 for a, b in zip(row, above)))
        above = row
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) +
            chunk(b"IEND", b""))


def take(program, name, part=None):
    """Saves what the window shows, or the part from (left, top) to (right, bottom), once nothing moves in it."""
    program.steady_pixels()
    picture = program.picture()
    check((picture.width, picture.height) == (WIDTH, HEIGHT), f"the window has {picture.width} x {picture.height}")
    left, top, right, bottom = part or (0, 0, WIDTH, HEIGHT)
    rgb = b"".join(picture.rgb[(y * WIDTH + left) * 3:(y * WIDTH + right) * 3] for y in range(top, bottom))
    with open(os.path.join(IMAGES, name + ".png"), "wb") as file:
        file.write(png(right - left, bottom - top, rgb))


# What lies on drive C.

def fresh_folder(path):
    shutil.rmtree(path, ignore_errors=True)
    os.makedirs(path)


def install():
    for folder in (INSTALLED, PROJECTS, GAMES):
        fresh_folder(folder)
    shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), INSTALLED)
    shutil.copytree(os.path.join(STAGE, "assets"), os.path.join(INSTALLED, "assets"))


def remember_projects(*folders):
    """The Project Hub lists them in this order."""
    remembered = os.path.join(glob.glob(os.path.join(DRIVE, "users", "*", "AppData", "Local"))[0], "ZelEngine")
    os.makedirs(remembered, exist_ok=True)
    with open(os.path.join(remembered, "recent-projects.txt"), "w", encoding="utf-8", newline="\r\n") as file:
        file.writelines(f"C:\\Projects\\{os.path.basename(folder)}\n" for folder in folders)


# Steps of a user.

def active_title():
    return output_of("xdotool", "getactivewindow", "getwindowname").decode().strip()


def steady_screen():
    """Once no dialog on the screen changes any more."""
    seen = []

    def is_steady():
        seen.append(output_of("import", "-window", "root", "-depth", "8", "rgb:-"))
        return len(seen) > 1 and seen[-1] == seen[-2]

    wait_for(is_steady, "a screen on which nothing moves")


def choose_folder(program, name):
    """In the system's dialog: a folder on drive C."""
    wait_for(lambda: active_title() == "Browse for Folder", "the folder dialog")
    steady_screen()
    for act, argument in ((program.press, "Home"), (program.press, "Right"),
                          (program.type_text, "My"), (program.press, "Right"),  # My Computer
                          (program.press, "Right"), (program.press, "Right"),   # drive C
                          (program.type_text, name)):
        act(argument)
        steady_screen()
    program.press("Return")
    wait_for(program.has_focus, "the program's window after the dialog")


def row(index):
    """A row of the Hierarchy."""
    return 120, 92 + 28 * index + 9


def cell(index):
    """An item of the Files page."""
    return 18 + 108 * index + 49, BOTTOM_TOP + 82 + 20


def menu_item(corner, index):
    return corner[0] + 60, corner[1] + 34 + 28 * index + 12


def create(program, index):
    """By the Create menu of the viewport."""
    program.see(program.click, *EMPTY_VIEW, 3)
    program.see(program.click, *menu_item(EMPTY_VIEW, index))


def enter(program, text, old_length):
    """Into the open entry, in place of what it holds."""
    program.see(program.press, *["BackSpace"] * old_length)
    program.see(program.type_text, text)
    program.see(program.press, "Return")


def vector_box(name, axis):
    return INSPECTOR_LEFT + 10 + 116 + 61 * axis + 22, TRANSFORM_TOP + VECTOR_ROWS[name] + 9


def set_vector(program, name, *values):
    """Types values into the boxes X, Y and Z; None leaves one as it is."""
    for axis, value in enumerate(values):
        if value is None:
            continue
        program.see(program.click, *vector_box(name, axis))
        enter(program, value, 6)  # more presses than characters do no harm


def rename(program, name):
    program.see(program.double_click, *NAME_BOX)
    enter(program, name, 20)


def add_component(program, search):
    program.see(program.click, *SEARCH_BOX)
    program.see(program.type_text, search)
    program.see(program.press, "Return")


def remove_section(program, top):
    program.see(program.click, INSPECTOR_LEFT + 10 + 36, top + 13)


# The first game, in the order of the guide.

def clear_away(program):
    program.see(program.click, *row(3))  # EnemyEntity
    program.see(program.press, "Delete")


def give_player_its_script(program):
    """The template's cube turns about itself; it must not, for it walks where it faces."""
    program.see(program.click, *row(2))
    remove_section(program, AFTER_SHAPE)
    program.see(program.click, *FILES_TAB)
    program.see(program.double_click, *cell(2))  # scripts
    script, steps = cell(0), 8
    program.mouse_down(*script)
    for step in range(1, steps + 1):
        program.move(*(a + (b - a) * step // steps for a, b in zip(script, ON_INSPECTOR)))
    take(program, "drag-script")
    program.see(program.mouse_up, *ON_INSPECTOR)


def make_floor(program):
    program.see(program.click, *EMPTY_VIEW, 3)
    take(program, "create-menu", (230, 42, 800, 520))
    program.see(program.click, *menu_item(EMPTY_VIEW, 4))  # Plane
    set_vector(program, "Position", "0", "-0.7", "4")
    program.see(program.click, *vector_box("Scale", 0))
    take(program, "number-entry", (470, 320, 890, 500))
    enter(program, "5", 6)
    set_vector(program, "Scale", None, None, "5")
    program.see(program.click, *SEARCH_BOX)
    program.see(program.type_text, "colli")
    take(program, "add-component", (INSPECTOR_LEFT, 42, WIDTH, BOTTOM_TOP))
    program.see(program.press, "Return")
    add_component(program, "spawn")


def make_coin(program):
    create(program, 0)  # Object
    rename(program, "Coin")
    set_vector(program, "Scale", "0.5", "0.5", "0.5")
    program.see(program.click, INSPECTOR_LEFT + 210, SHAPE_TOP + 44)  # Mesh: Cube becomes Sphere
    add_component(program, "color")
    program.see(program.click, INSPECTOR_LEFT + 10 + 150 + 18, AFTER_SHAPE + 56)  # yellow, at the wheel's right
    take(program, "inspector", (INSPECTOR_LEFT, 42, WIDTH, BOTTOM_TOP))


def make_prefab_of_coin(program):
    program.see(program.click, *FILES_UP)
    program.see(program.click, *FILES_EMPTY, 3)
    take(program, "files-menu", (0, FILES_MENU[1] - 20, WIDTH, HEIGHT))
    program.see(program.click, *menu_item(FILES_MENU, 4))
    program.see(program.press, "Delete")  # the floor is the last object now, and selected
    program.drag(cell(3), ON_INSPECTOR)
    program.see(program.click, *row(2))  # PlayerCube
    program.drag(cell(3), ON_INSPECTOR)


def show_score(program):
    create(program, 5)  # Text
    set_vector(program, "Position", "-3", "4", "2")
    program.see(program.click, INSPECTOR_LEFT + 210, SHAPE_TOP + 72)  # Size
    enter(program, "32", 6)


def play(program):
    program.see(program.click, *CONSOLE_TAB)
    program.see(program.press, "p")
    take(program, "play")
    program.see(program.press, "p")


def open_again(program):
    """By way of the Project Hub."""
    program.click(*HUB_BUTTON)
    wait_for(lambda: program.title() == HUB_TITLE, "the Project Hub")
    program.steady_pixels()
    program.open_first_project()


def be_rid_of_cubes(program):
    """Saving and opening puts one around the camera and one around the light."""
    program.see(program.press, "ctrl+s")
    open_again(program)
    program.see(program.click, *row(0))
    remove_section(program, TRANSFORM_TOP + 136 + 150)  # below Transform and Camera
    program.see(program.click, *row(1))
    remove_section(program, SHAPE_TOP)
    program.see(program.press, "ctrl+s")


def build(program):
    program.click(*BUILD_BUTTON)
    choose_folder(program, "Games")
    wait_for(lambda: os.path.exists(BUILT_GAME), "the built game")


def check_first_game():
    """What the guide promises of each step stands in the scene that was saved."""
    with open(os.path.join(FIRST_GAME, "Files", "Scenes", "Main.scene"), encoding="utf-8-sig") as file:
        objects = {fields[1]: fields for fields in (line.rstrip("\n").split("\t") for line in file) if fields[0] == "O"}
    check(list(objects)[2:] == ["PlayerCube", "Platform", "Ground", "Plane_05", "Text_06"], f"it holds {list(objects)}")
    player, floor, text = objects["PlayerCube"], objects["Plane_05"], objects["Text_06"]
    check(player[12] == "0" and player[31] == "1", "the player has no Animation, and Collision")
    check(player[30] == "PlayerController;CollectOnTouch", f"the player's scripts are {player[30]}")
    check(player[50] == floor[52] == "Files\\Coin.prefab", f"the prefabs are {player[50]} and {floor[52]}")
    check(floor[3] == "-0.700000" and floor[8] == floor[10] == "5.000000" and floor[31] == "1", "the floor")
    check(floor[30] == "PlanePrefabSpawner", f"the floor's scripts are {floor[30]}")
    check(text[57] == "1" and text[60] == "32.000000", "the text")
    shown = [name for name in ("Game Camera", "Directional Light") if objects[name][17] == "1"]
    check(not shown, f"a cube stands around {shown}")


def make_first_game():
    with running(INSTALLED) as program:
        program.click(*BASIC_CARD)
        choose_folder(program, "Projects")
        wait_for(lambda: program.title() == "ZelEngine - ZelEngineProject", "the new project")
        take(program, "new-project")
        for step in (clear_away, give_player_its_script, make_floor, make_coin, make_prefab_of_coin, show_score,
                     play, be_rid_of_cubes, build):
            step(program)
    check_first_game()
    with running(os.path.dirname(BUILT_GAME), "ZelGame.exe") as game:
        take(game, "built-game")


# The screens, with the sample project.

def write_scene_by_script():
    """With the script of the guide's page about files."""
    with open(os.path.join(GUIDE, "en", "file-formats.md"), encoding="utf-8") as page:
        script = page.read().split("```python\n")[1].split("```")[0]
    subprocess.run([sys.executable, "-c", script], cwd=os.path.join(SAMPLE, "Files", "Scenes"), check=True)


def show_screens():
    shutil.copytree(os.path.join(STAGE, "Project"), SAMPLE)
    write_scene_by_script()
    remember_projects(SAMPLE, FIRST_GAME)
    with running(INSTALLED, forget=False) as program:
        program.see(program.click, 560, 280, 3)  # the second project
        take(program, "hub")
        program.see(program.click, 100, 600)
        program.open_first_project()
        program.see(program.click, *FILES_TAB)
        program.see(program.click, *row(16))  # Crate 1
        take(program, "scene-editor")
        program.see(program.click, *row(1), 3)  # Walker
        take(program, "object-menu", (0, 42, 340, 420))
        program.see(program.double_click, *cell(2))  # Prefabs; the press closes the menu
        program.see(program.double_click, *cell(2))  # Tree.prefab
        take(program, "prefab-editor")
        program.see(program.press, "Escape")
        program.see(program.click, *FILES_UP)
        program.see(program.double_click, *cell(0))  # Blueprints
        program.see(program.double_click, *cell(0))
        take(program, "blueprint")
        program.see(program.press, "Escape")
        program.see(program.click, *FILES_UP)
        program.see(program.double_click, *cell(3))  # Scenes
        program.double_click(*cell(2))  # Stairs.scene, behind Level2 and Main
        wait_for(lambda: active_title() == "ZelEngine", "the question whether to save")
        program.press("alt+n")
        wait_for(program.has_focus, "the program's window after the question")
        program.see(program.click, *row(3))  # Step 1
        take(program, "script-scene")


if __name__ == "__main__":
    os.makedirs(IMAGES, exist_ok=True)
    install()
    make_first_game()
    show_screens()
