#!/usr/bin/env python3
"""A Blueprint from its creation in the Files page to its saved bytes, in the real window."""

import os
import shutil
import sys
import tempfile

from program import ROOT, STAGE, check, run_tests, running, wait_for

HEIGHT = 820
BOTTOM_TOP = HEIGHT - 132
FILES_TAB = (60, BOTTOM_TOP + 20)
EMPTY_SPACE = (1000, BOTTOM_TOP + 112)
CREATE_MENU = (1000, HEIGHT - 188)  # moved up into the window
FIRST_CELL = (18 + 49, BOTTOM_TOP + 82 + 20)
CELL_PITCH = 108

CANVAS_LEFT, CANVAS_TOP = 230, 44
HEADER = "ZELENGINE_BLUEPRINT\t1"
NEW_NODES = ["NODE\t1\tEvent BeginPlay\t130\t130", "NODE\t2\tPrint String\t420\t130"]


def menu_item(corner, index, first=34):
    return corner[0] + 60, corner[1] + first + 28 * index + 12


def blueprint_bytes(*nodes):
    return b"\xef\xbb\xbf" + "".join(line + "\r\n" for line in [HEADER, *nodes]).encode()


def wait_for_bytes(path, expected):
    def holds():
        if not os.path.exists(path):
            return False
        with open(path, "rb") as file:
            return file.read() == expected
    wait_for(holds, f"{os.path.basename(path)} to hold {expected}")


def place_of_new_cell(files):
    """Behind the folders and files of the sample, which the page lists first."""
    return FIRST_CELL[0] + CELL_PITCH * len(os.listdir(files)), FIRST_CELL[1]


def a_blueprint_is_created_opened_edited_and_saved():
    with tempfile.TemporaryDirectory(prefix="zel_blueprint_", dir=os.path.join(ROOT, "build")) as folder:
        shutil.copytree(STAGE, folder, dirs_exist_ok=True)
        files = os.path.join(folder, "Project", "Files")
        path = os.path.join(files, "Blueprint_01.blueprint")
        with running(folder) as program:
            program.open_first_project()
            program.see(program.click, *FILES_TAB)
            cell = place_of_new_cell(files)
            program.see(program.click, *EMPTY_SPACE)
            program.see(program.click, *menu_item(CREATE_MENU, 3))
            wait_for_bytes(path, blueprint_bytes(*NEW_NODES))

            program.see(program.double_click, *cell)
            program.picture().save("blueprint_opened")
            corner = (400, 500)
            program.see(program.click, *corner, 3)
            program.see(program.click, *menu_item(corner, 2, first=36))  # Branch
            node = (corner[0] - CANVAS_LEFT, corner[1] - CANVAS_TOP)
            grip = (corner[0] + 50, corner[1] + 40)
            program.drag(grip, (grip[0] + 200, grip[1] + 100))
            dragged = f"NODE\t3\tBranch\t{node[0] + 200}\t{node[1] + 100}"
            wait_for_bytes(path, blueprint_bytes(*NEW_NODES, dragged))  # a drag saves

            second = (700, 600)
            program.see(program.click, *second, 3)
            program.see(program.click, *menu_item(second, 0, first=36))  # Event
            program.picture().save("blueprint_edited")
            program.press("ctrl+s")
            added = f"NODE\t4\tEvent\t{second[0] - CANVAS_LEFT}\t{second[1] - CANVAS_TOP}"
            wait_for_bytes(path, blueprint_bytes(*NEW_NODES, dragged, added))

            program.see(program.press, "Escape")
            program.picture().save("blueprint_left")
            check(program.process.poll() is None, "Escape ended the program")
            program.press("Escape")
            check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")


if __name__ == "__main__":
    sys.exit(0 if run_tests([a_blueprint_is_created_opened_edited_and_saved]) else 1)
