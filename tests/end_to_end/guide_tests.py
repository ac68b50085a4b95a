#!/usr/bin/env python3
"""The guide's first game, made and played in the real window from the text of its page.

Each rule knows one way in which the page tells a step, and takes names, keys and numbers from there. What the page
quotes and no rule takes is listed below; so a step that is told otherwise, or a new one, fails until a rule plays it."""

import os
import re
import sys
import time

import take_guide_pictures as guide
from game_tests import spots, walk
from program import check, run_tests, running, wait_for

PAGE = os.path.join(guide.GUIDE, "en", "first-game.md")
SCORE = (470, 215, 640, 265)  # where the game's camera shows the text of the guide
FLOOR = ((-5, 5), (-1, 9))    # along x and z

# The sections of the template's objects, with their heights; what is made later begins like the cube.
TRANSFORM, SHAPE, CAMERA, ANIMATION = ("Transform", 136), ("Shape", 92), ("Camera", 150), ("Animation", 100)
TEMPLATE = ["Game Camera", "Directional Light", "PlayerCube", "EnemyEntity", "Platform", "Ground"]
SECTIONS = {"Game Camera": [TRANSFORM, CAMERA, SHAPE], "Directional Light": [TRANSFORM, SHAPE],
            "PlayerCube": [TRANSFORM, SHAPE, ANIMATION]}

# Quoted without being a step: what is told about, or the name of the same thing again.
MENTIONED = {"ZelEngine.exe", "ZelEngineProject", "ZelEngineProject_Build", "ZelGame.exe", "Coin.prefab",
             "PlayerController", "PlanePrefabSpawner", "CollectOnTouch", "scripts"}


def page_text():
    """The steps, a line each, without pictures and links."""
    with open(PAGE, encoding="utf-8") as file:
        text = file.read().split("## 1.")[1].split("## What next")[0]
    text = re.sub(r"!\[[^\]]*\]\([^)]*\)", "", text)
    text = re.sub(r"\[([^\]]+)\]\([^)]*\)", r"\1", text)
    return re.sub(r"\s+", " ", text)


class Reader:
    """Does what the page says, and keeps in mind what a user sees: the rows, the folder, the selected object."""

    def __init__(self, program):
        self.program = program
        self.rows, self.selected, self.removed, self.folder = list(TEMPLATE), "PlayerCube", "", ""
        self.made, self.is_finished = [], False

    # Steps. Each takes what its rule found.

    def make_project(self):
        self.program.click(*guide.BASIC_CARD)
        guide.choose_folder(self.program, "Projects")
        wait_for(lambda: self.program.title() == "ZelEngine - ZelEngineProject", "the new project")
        self.program.steady_pixels()

    def select(self, name):
        self.program.see(self.program.click, *guide.row(self.rows.index(name)))
        self.selected = name

    def delete(self):
        self.program.see(self.program.press, "Delete")
        self.rows.remove(self.selected)
        self.selected = self.rows[-1]

    def remove_section(self, title):
        top, self.removed = guide.TRANSFORM_TOP, title
        for section, height in SECTIONS[self.selected]:
            if section == title:
                guide.remove_section(self.program, top)
                return
            top += height
        check(False, f"{self.selected} has no section {title}")

    def remove_same_section(self, name):
        self.select(name)
        self.remove_section(self.removed)

    def show_files(self):
        self.program.see(self.program.click, *guide.FILES_TAB)

    def cell_of(self, name):
        """The names of a folder are sorted; what was made since it was opened stands at their end."""
        names = sorted(set(os.listdir(os.path.join(guide.FIRST_GAME, "Files", self.folder))) - set(self.made),
                       key=str.lower)
        return guide.cell((names + self.made).index(name))

    def open_folder(self, name):
        self.program.see(self.program.double_click, *self.cell_of(name))
        self.folder = name

    def leave_folder(self):
        self.program.see(self.program.click, *guide.FILES_UP)
        self.folder = ""

    def drop_on_inspector(self, name):
        self.program.drag(self.cell_of(name), guide.ON_INSPECTOR)
        self.program.steady_pixels()

    def create(self, kind):
        guide.create(self.program, ["Object", "Entity", "Camera", "Light", "Plane", "Text"].index(kind))
        self.selected = f"{kind}_{len(self.rows):02}"
        self.rows.append(self.selected)

    def set_vector(self, name, *values):
        guide.set_vector(self.program, name, *values)

    def add_component(self, search):
        guide.add_component(self.program, search)

    def rename(self, name):
        guide.rename(self.program, name)
        self.rows[self.rows.index(self.selected)] = self.selected = name

    def step_mesh(self):
        self.program.see(self.program.click, guide.INSPECTOR_LEFT + 210, guide.SHAPE_TOP + 44)

    def pick_yellow(self):
        self.program.see(self.program.click, guide.INSPECTOR_LEFT + 10 + 150 + 18, guide.AFTER_SHAPE + 56)

    def make_prefab(self):
        self.program.see(self.program.click, *guide.FILES_EMPTY, 3)
        self.program.see(self.program.click, *guide.menu_item(guide.FILES_MENU, 4))
        self.made.append(self.selected + ".prefab")

    def set_text(self, x, y, z, pixels):
        self.set_vector("Position", x, y, z)
        self.program.see(self.program.click, guide.INSPECTOR_LEFT + 210, guide.SHAPE_TOP + 72)
        guide.enter(self.program, pixels, 6)

    def play(self, start, keys, stop):
        """To the first coin, which lies where the generator's rule puts it."""
        check(keys == "W, S, A and D", f"the player moves by {keys}")
        before = self.program.picture()
        self.program.see(self.program.press, start.lower())
        started = self.program.picture()
        (x, z), = spots(1, FLOOR)
        walk(self.program, "d", "a", x)
        walk(self.program, "w", "s", z - 2)
        end = time.monotonic() + 60
        while self.program.picture().share_equal_to(started, SCORE) == 1:
            check(time.monotonic() < end, "60 s of walking to and fro gave no score")
            for key in "wasdsdwa":  # around the place, for a slow machine walks another way than was meant
                walk(self.program, key, key, 0.6)
        self.program.picture().save("guide_score")
        self.program.press(stop.lower())
        wait_for(lambda: self.program.picture().share_equal_to(before, (0, 0, 1360, 688)) == 1, "the scene of before")

    def save(self):
        self.program.see(self.program.press, "ctrl+s")

    def open_again(self):
        guide.open_again(self.program)

    def build(self):
        self.program.click(*guide.BUILD_BUTTON)
        guide.choose_folder(self.program, "Games")
        wait_for(lambda: os.path.exists(guide.BUILT_GAME), "the built game")

    def start_built_game(self, key):
        self.program.stop()
        with running(os.path.dirname(guide.BUILT_GAME), "ZelGame.exe") as game:
            check(game.title() == "ZelGame", f"the game's title is '{game.title()}'")
            check(key == "Esc", f"{key} quits the game")
            game.press("Escape")
            wait_for(lambda: game.exit_code() == 0, "the end of the game")
        self.is_finished = True


NUMBER = r"`(-?[\d.]+)`"
RULES = [(re.compile(told), act) for told, act in [
    (r'click the card "Zakladni projekt" and choose a folder', Reader.make_project),
    (r'[Cc]lick "([^"]+)" in the Hierarchy', Reader.select),
    (r"[Pp]ress Delete\.", Reader.delete),
    (r'At the section "(\w+)" click the box `\[x\]`', Reader.remove_section),
    (r'click `\[x\]` at the section "(\w+)"', Reader.remove_section),
    (r'do the same with "([^"]+)"', Reader.remove_same_section),
    (r'[Cc]lick the tab "Files"', Reader.show_files),
    (r'double-click the folder "(\w+)"', Reader.open_folder),
    (r"click `<` to leave", Reader.leave_folder),
    (r"[Dd]rag `([^`]+)` onto the Inspector", Reader.drop_on_inspector),
    (r'Click with the right mouse button on an empty spot of the viewport\. In the menu "Vytvorit" choose "(\w+)"',
     Reader.create),
    (r'Right click in the viewport and choose "(\w+)"', Reader.create),
    (r"click the box of Position X\. .*? type the one digit " + NUMBER + ", press Enter",
     lambda reader, x: reader.set_vector("Position", x)),
    (f"Set Y to {NUMBER} and Z to {NUMBER}", lambda reader, y, z: reader.set_vector("Position", None, y, z)),
    (f"Set Scale X and Scale Z to {NUMBER}", lambda reader, both: reader.set_vector("Scale", both, None, both)),
    (f"Set Scale X, Y and Z to {NUMBER}", lambda reader, all_: reader.set_vector("Scale", all_, all_, all_)),
    (r'Click "Add Component\.\.\." at the bottom of the Inspector, type `(\w+)` and press Enter', Reader.add_component),
    (r'Do the same with `(\w+)`', Reader.add_component),
    (r'Click "Add Component\.\.\.", type `(\w+)`, press Enter', Reader.add_component),
    (r"Double-click its name at the top of the Inspector, delete it with Backspace, type `(\w+)`, Enter", Reader.rename),
    (r'Click the value "Cube" of the row "Mesh": it becomes "Sphere"', Reader.step_mesh),
    (r"Click into the colour wheel where it is yellow", Reader.pick_yellow),
    (r'Right click on an empty spot of the page and choose "Vytvorit prefab"', Reader.make_prefab),
    (f'Set Position to {NUMBER}, {NUMBER}, {NUMBER}, and Size in the section "Text" to {NUMBER}', Reader.set_text),
    (r"Press (P)\. (W, S, A and D) move the cube\. .*? (P) again stops the game", Reader.play),
    (r"[Pp]ress Ctrl\+S", Reader.save),
    (r'Click "Project Hub" at the top right, and there the row of your project', Reader.open_again),
    (r'Click "Sestavit projekt" at the top right and choose a folder', Reader.build),
    (r"Start that: it is your game\. (Esc) quits it", Reader.start_built_game),
]]


def steps_of(text):
    """(place, act, what it takes), in the order of the text."""
    found = [(match.start(), act, match.groups()) for told, act in RULES for match in told.finditer(text)]
    return sorted(found, key=lambda step: step[0])


def every_label_name_and_number_of_the_page_belongs_to_a_step():
    text = page_text()
    unused = [told.pattern for told, _ in RULES if not told.search(text)]
    check(not unused, f"the page has no such steps: {unused}")
    rest = text
    for told, _ in RULES:
        rest = told.sub("", rest)
    quoted = set(re.findall(r'"([^"]+)"', rest)) | set(re.findall(r"`([^`]+)`", rest))
    check(quoted <= MENTIONED, f"no rule plays {quoted - MENTIONED}")


def the_page_makes_the_game_that_it_promises():
    guide.install()
    with running(guide.INSTALLED) as program:
        reader = Reader(program)
        for _, act, taken in steps_of(page_text()):
            act(reader, *taken)
    check(reader.is_finished, "the page never starts the built game")
    guide.check_first_game()


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        every_label_name_and_number_of_the_page_belongs_to_a_step,
        the_page_makes_the_game_that_it_promises,
    ]) else 1)
