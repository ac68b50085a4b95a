#!/usr/bin/env python3
"""A scene edited with mouse and keyboard in the real window, and the files that come of it, byte by byte.

What the files must hold is worked out here from the rules alone: where a click lands in the panels, the camera
and its projection, the gizmo, the colour wheel, the places of objects under parents and the format of a line.
"""

import math
import os
import shutil
import struct
import sys
import tempfile
import time

from program import ROOT, STAGE, check, run_tests, running, wait_for

# The window at its first size, and the panels at theirs.
WIDTH, HEIGHT = 1360, 820
BOTTOM_TOP = HEIGHT - 132
INSPECTOR_LEFT = WIDTH - 320
VIEWPORT = (230, 42, INSPECTOR_LEFT, BOTTOM_TOP)
CONTENT_LEFT = INSPECTOR_LEFT + 10

CONSOLE_TAB = (160, BOTTOM_TOP + 24)
NAME_BOX = (INSPECTOR_LEFT + 100, 103)
EMPTY_VIEW = (420, 120)  # sky, away from the tools

# Heads of the sections of the object that is made: each ends where the next begins.
TRANSFORM_TOP = 162
SHAPE_TOP = TRANSFORM_TOP + 136
COLOR_TOP = SHAPE_TOP + 92
SEARCH_BOX = (CONTENT_LEFT + 150, BOTTOM_TOP - 114 + 14)  # short sections leave it at the panel's bottom


def row(index):
    """The y of a row of the Hierarchy."""
    return 92 + 28 * index


def single(number):
    """The number as the program holds it."""
    return struct.unpack("f", struct.pack("f", number))[0]


def six_decimals(number):
    return f"{single(number):.6f}"


def computed(number):
    """A result that single precision may miss by a little, which must not show in six decimals."""
    error = 2.5e-7
    check(six_decimals(number - error) == six_decimals(number + error), f"{number!r} is too near to a border")
    return number


def truncated(number):
    check(0.01 < number % 1 < 0.99 or number == int(number), f"{number!r} is too near to a border")
    return int(number)


# The format of a scene.

DEFAULTS = {
    "name": "", "position": (0, 0, 0), "rotation": (0, 0, 0), "scale": (1, 1, 1), "mesh": "builtin:Cube",
    "hasAnimation": 0, "parentIndex": -1, "isEntity": 0, "isCamera": 0, "isLight": 0, "hasShape": 1,
    "hasColor": 0, "transformExpanded": 1, "shapeExpanded": 1, "colorExpanded": 1, "animationExpanded": 1,
    "animationType": 0, "animationSpeed": 1.0, "scriptCount": 0, "color": 0xC4CD4E, "roughness": 0.72,
    "gloss": 0.18, "colorWheelExpanded": 0, "scripts": "", "hasCollision": 0, "hasGravitation": 0,
    "collisionExpanded": 1, "gravitationExpanded": 1, "velocityY": 0.0, "gravityStrength": 9.8, "hasTexture": 0,
    "textureExpanded": 1, "textureRepeat": 0, "texturePath": "", "hasRigidbody": 0, "rigidbodyExpanded": 1,
    "mass": 1.0, "drag": 0.05, "velocity": (0, 0, 0), "active": 1, "collectTarget": "", "collectPrefab": "",
    "prefabSource": "", "spawnerPrefab": "", "cameraExpanded": 1, "cameraBackgroundSet": 0,
    "cameraBackground": 0x2D2219, "cameraBrightness": 1.0, "isText": 0, "textExpanded": 1, "text": "Text",
    "textSize": 18.0,
}


def fields_of(value):
    if isinstance(value, tuple):
        return [six_decimals(part) for part in value]
    return [six_decimals(value) if isinstance(value, float) else str(value)]


def line_of(**values):
    fields = ["O"]
    for key, default in DEFAULTS.items():
        fields += fields_of(values.pop(key, default))
    check(not values and len(fields) == 61, f"{len(fields)} columns, unknown: {values}")
    return "\t".join(fields)


def file_bytes(*lines):
    """UTF-8 with its mark, lines ended as on Windows."""
    return b"\xef\xbb\xbf" + "".join(line + "\r\n" for line in lines).encode()


def scene_bytes(*objects):
    return file_bytes("ZELENGINE_SCENE\t1", *objects)


def project_bytes(*objects):
    return file_bytes("ZELENGINE_PROJECT\t1", "FILES\tFiles", "CURRENT_SCENE\tFiles\\Scenes\\Main.scene", *objects)


# The project before the edit. The tower stands where its inverse is exact: moved, and twice as large.

TOWER_PLACE, TOWER_SIZE = (1, 0.5, 6), 2
CAMERA = line_of(name="Game Camera", position=(0, 2, -7), rotation=(-0.08, 0, 0), isCamera=1, hasShape=0)
LIGHT = line_of(name="Directional Light", position=(0, 4, -2), rotation=(-0.7, 0.4, 0), isLight=1, hasShape=0)
TOWER = line_of(name="Tower", position=TOWER_PLACE, scale=(TOWER_SIZE,) * 3)
BALL = line_of(name="Ball", position=(-3, 3, 5), mesh="builtin:Sphere", hasAnimation=1, hasCollision=1,
               hasRigidbody=1)
BEFORE = (CAMERA, LIGHT, TOWER, BALL)


# Where things are seen, by the editor's first camera: at (0, 4, -10), looking along +Z and 0.24 down.

def on_screen(x, y, z):
    left, top, right, bottom = VIEWPORT
    width, height = right - left, bottom - top
    pitch = -0.24
    forward = (0, math.sin(pitch), math.cos(pitch))
    up = (0, forward[2], -forward[1])  # forward x right, right being +X
    fx, fy, fz = x, y - 4, z + 10
    depth = forward[1] * fy + forward[2] * fz
    height_seen = up[1] * fy + up[2] * fz
    zoom = 1 / math.tan(0.6108653)  # half of 70 degrees
    screen_x = (fx * zoom / (width / height) / depth * 0.5 + 0.5) * width + left
    screen_y = (0.5 - height_seen * zoom / depth * 0.5) * height + top
    return screen_x, screen_y


# The new object: the fifth one, so 3 + 0.4 * 4 away. Its X axis is dragged 7 pixels to the right and 7 up: not far,
# so that the parts of pixels in single precision are too small to show in six decimals.

MADE_PLACE = (0, 0, single(3 + single(0.4) * 4))
DRAG = (7, -7)


def gizmo_x_axis():
    """The places of its origin and its tip, 1.25 units away, not rounded to pixels."""
    x, y, z = MADE_PLACE
    return on_screen(x, y, z), on_screen(x + 1.25, y, z)


def dragged_place():
    """The drag counts along the axis on the screen; the axis' own length on the screen is 1.25 units."""
    (ox, oy), (tx, ty) = gizmo_x_axis()
    sx, sy = tx - ox, ty - oy
    travel = (DRAG[0] * sx + DRAG[1] * sy) / (sx * sx + sy * sy) * 1.25
    return (MADE_PLACE[0] + travel, MADE_PLACE[1], MADE_PLACE[2])


# The colour: a click right of and below the middle of the small wheel, which has a radius of 22 pixels.

WHEEL_MIDDLE = (CONTENT_LEFT + 150, COLOR_TOP + 56)
WHEEL_OFFSET = (10, 5)


def picked_color():
    dx, dy = WHEEL_OFFSET
    hue = (math.atan2(dy, dx) + math.pi) / (2 * math.pi)
    saturation = math.hypot(dx, dy) / 22
    sector = int(hue * 6)
    part = hue * 6 - sector
    p, q, t = 1 - saturation, 1 - part * saturation, 1 - (1 - part) * saturation
    rgb = ((1, t, p), (q, 1, p), (p, 1, t), (p, q, 1), (t, p, 1), (1, p, q))[sector]
    red, green, blue = (truncated(channel * 255) for channel in rgb)
    return red | green << 8 | blue << 16


# The large wheel, which that click opens, puts the bars lower. They begin 88 pixels from the left and are 156
# wide, so that 39 pixels are a quarter.
MATTE_QUARTER = (CONTENT_LEFT + 88 + 39, COLOR_TOP + 154 + 10)

POSITION_Y_BOX = (CONTENT_LEFT + 116 + 61 + 20, TRANSFORM_TOP + 34 + 8)


def place_under_tower(place):
    return tuple(computed((part - tower) / TOWER_SIZE) for part, tower in zip(place, TOWER_PLACE))


def expected_objects():
    """After the edit: the ball has been put before the tower, the new box is the tower's child."""
    x, _, z = dragged_place()
    box = line_of(name="Small box", position=place_under_tower((x, 1.25, z)), scale=(0.75,) * 3, parentIndex=3,
                  hasColor=1, color=picked_color(), roughness=0.25, colorWheelExpanded=1)
    return CAMERA, LIGHT, BALL, TOWER, box


def make_project(folder):
    shutil.copytree(os.path.join(STAGE, "assets"), os.path.join(folder, "assets"))
    shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), folder)
    os.makedirs(os.path.join(folder, "Project", "Files", "Scenes"))
    for path, content in ((scene_path(folder), scene_bytes(*BEFORE)), (project_path(folder), project_bytes())):
        with open(path, "wb") as file:
            file.write(content)


def scene_path(folder):
    return os.path.join(folder, "Project", "Files", "Scenes", "Main.scene")


def project_path(folder):
    return os.path.join(folder, "Project", "project.zel")


def content_of(path):
    with open(path, "rb") as file:
        return file.read()


def first_difference(actual, expected):
    for number, (mine, theirs) in enumerate(zip(actual.split(b"\r\n"), expected.split(b"\r\n"))):
        for column, (field, other) in enumerate(zip(mine.split(b"\t"), theirs.split(b"\t"))):
            if field != other:
                return f"line {number}, column {column} is {field!r}, not {other!r}"
    return f"{len(actual)} bytes, not {len(expected)}"


def check_file(path, expected):
    actual = content_of(path)
    check(actual == expected, f"{os.path.basename(path)}: {first_difference(actual, expected)}")


def create_object(program):
    program.see(program.click, *EMPTY_VIEW, 3)
    program.see(program.click, EMPTY_VIEW[0] + 30, EMPTY_VIEW[1] + 34 + 12)


def drag_gizmo(program):
    tip = tuple(truncated(place) for place in gizmo_x_axis()[1])
    program.see(program.drag, tip, (tip[0] + DRAG[0], tip[1] + DRAG[1]))


def rename(program):
    program.see(program.double_click, *NAME_BOX)
    program.see(program.press, *["BackSpace"] * len("GameObject_04"))
    program.see(program.type_text, "Small box")
    program.see(program.press, "Return")


def color(program):
    program.see(program.click, *SEARCH_BOX)
    program.see(program.type_text, "col")
    program.see(program.press, "Return")
    program.see(program.click, WHEEL_MIDDLE[0] + WHEEL_OFFSET[0], WHEEL_MIDDLE[1] + WHEEL_OFFSET[1])
    program.see(program.click, *MATTE_QUARTER)


def type_height(program):
    program.see(program.click, *POSITION_Y_BOX)
    program.see(program.press, *["BackSpace"] * len("0.00"))
    program.see(program.type_text, "1,25")
    program.see(program.press, "Return")


def rearrange(program):
    """The middle of a row makes a child, its upper edge puts before it."""
    program.see(program.drag, (60, row(4) + 9), (60, row(2) + 9))  # the box onto the tower, followed by the ball
    # Pressed elsewhere on the row, or it would be a double click.
    program.see(program.drag, (120, row(4) + 9), (30, row(2) - 2))  # the ball before the tower


def duplicate_and_undo(program):
    program.see(program.press, "ctrl+d")
    program.see(program.press, "ctrl+z")


def play_for_a_second(program):
    """The ball turns and falls."""
    before = program.steady_pixels()
    program.press("p")
    wait_for(lambda: program.pixels() != before, "the scene to play")
    time.sleep(1)
    program.press("p")
    program.steady_pixels()


def save_anew(program, path):
    os.remove(path)
    program.press("ctrl+s")
    wait_for(lambda: os.path.exists(path), "the scene's file")


def a_scene_edited_with_mouse_and_keyboard_is_saved_as_the_rules_say():
    with tempfile.TemporaryDirectory(prefix="zel_editing_", dir=os.path.join(ROOT, "build")) as folder:
        make_project(folder)
        with running(folder) as program:
            program.open_first_project()
            program.see(program.click, *CONSOLE_TAB)  # shows every message
            for step in (create_object, drag_gizmo, rename, color, type_height, rearrange, duplicate_and_undo):
                step(program)
                program.picture().save("editing_" + step.__name__)
            check_file(scene_path(folder), scene_bytes(*BEFORE))
            program.see(program.press, "ctrl+s")
            check_file(scene_path(folder), scene_bytes(*expected_objects()))
            check_file(project_path(folder), project_bytes(*expected_objects()))

            play_for_a_second(program)
            check_file(scene_path(folder), scene_bytes(*expected_objects()))
            save_anew(program, scene_path(folder))
            check_file(scene_path(folder), scene_bytes(*expected_objects()))
            program.press("Escape")
            check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")
            check_file(scene_path(folder), scene_bytes(*expected_objects()))


if __name__ == "__main__":
    sys.exit(0 if run_tests([a_scene_edited_with_mouse_and_keyboard_is_saved_as_the_rules_say]) else 1)
