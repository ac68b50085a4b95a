#!/usr/bin/env python3
"""Projects from their creation to their built game, in the real window and the system's own dialogs."""

import glob
import os
import re
import shutil
import sys
import time

from program import HUB_TITLE, check, forget_recent_projects, output_of, run_tests, running, wait_for

WIDTH = 1360
# In the Project Hub at the window's first size.
FIRST_ROW = (560, 200)
BASIC_CARD, EMPTY_CARD = (1050, 280), (1050, 370)
OPEN_OTHER = (1230, 36)
# Items of the menu that a right click opens, from its corner.
REMOVE_ITEM, DELETE_ITEM = (100, 49), (100, 82)
# In the top bar of the editor.
HUB_BUTTON, BUILD_BUTTON = (WIDTH - 365, 22), (WIDTH - 90, 22)
# Of the Files page.
FILES_TAB, SECOND_CELL = (60, 706), (175, 790)

BAR = (20, 760, 1340, 800)  # over the bottom panel, during long work

HOME = os.environ["HOME"]  # what the folder dialog offers first, as the desktop
PLAYER_CONTROLLER = (b"// ZelEngine PlayerController\n\nfloat moveSpeed = 4.0f;\n\nvoid Update() {\n"
                     b"    // W/S/A/D pohyb je zatim spousten enginem podle nazvu PlayerController.\n}\n")


def at_home(*parts):
    return os.path.join(HOME, *parts)


def content(*parts):
    with open(at_home(*parts), "rb") as file:
        return file.read()


def forget_everything():
    forget_recent_projects()
    for folder in glob.glob(at_home("ZelEngineProject*")) + glob.glob(at_home(".local", "share", "Trash")):
        shutil.rmtree(folder)


def recent_projects():
    """The last components of the listed folders, in order."""
    pattern = os.path.join(os.environ["WINEPREFIX"], "drive_c/users/*/AppData/Local/ZelEngine/recent-projects.txt")
    with open(glob.glob(pattern)[0], encoding="utf-8-sig") as file:
        return [re.split(r"[\\/]", line.strip())[-1] for line in file]


def active_title():
    return output_of("xdotool", "getactivewindow", "getwindowname").decode().strip()


def answer(program, dialog, key):
    """Waits for a dialog of the system, and answers it by a key."""
    wait_for(lambda: active_title() == dialog, f"the dialog '{dialog}'")
    program.press(key)
    wait_for(program.has_focus, "the program's window after the dialog")


def wait_for_title(program, title):
    wait_for(lambda: program.title() == title, f"the title '{title}'")


def scene_objects(*parts):
    return [line.split("\t")[1] for line in content(*parts).decode("utf-8-sig").split("\r\n") if line[:2] == "O\t"]


def both_templates_make_projects_that_a_restart_lists_and_opens():
    forget_everything()
    with running() as program:
        program.click(*EMPTY_CARD)
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        main = ("ZelEngineProject", "Files", "Scenes", "Main.scene")
        check(scene_objects(*main) == ["Game Camera", "Directional Light"], "the empty template's scene")
        check(content("ZelEngineProject", "Files", "scripts", "PlayerController.cpp") == PLAYER_CONTROLLER,
              "the player's script")
        check(os.path.isdir(at_home("ZelEngineProject", "Files", "imported")), "the folder for imports")

        program.click(*HUB_BUTTON)
        wait_for_title(program, HUB_TITLE)
        program.click(*BASIC_CARD)
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject_01")
        objects = scene_objects("ZelEngineProject_01", "Files", "Scenes", "Main.scene")
        check(objects[2:] == ["PlayerCube", "EnemyEntity", "Platform", "Ground"], f"the basic template has {objects}")
        program.press("Escape")
        check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")

    with running(forget=False) as program:
        program.picture().save("hub_list")
        check(recent_projects()[:2] == ["ZelEngineProject_01", "ZelEngineProject"], f"listed: {recent_projects()}")
        program.click(*FIRST_ROW)
        wait_for_title(program, "ZelEngine - ZelEngineProject_01")
        program.click(*HUB_BUTTON)
        wait_for_title(program, HUB_TITLE)
        program.click(*OPEN_OTHER)
        answer(program, "Browse for Folder", "Escape")
        wait_for_title(program, HUB_TITLE)


def a_project_saved_under_a_new_folder_is_built_into_a_game_that_starts():
    forget_everything()
    with running() as program:
        program.click(*BASIC_CARD)
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        program.press("ctrl+shift+s")
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject_01")
        program.click(*BUILD_BUTTON)
        answer(program, "Browse for Folder", "Return")
        build = at_home("ZelEngineProject_01_Build")
        wait_for(lambda: os.path.exists(os.path.join(build, "ZelGame.exe")), "the built game")
        check(program.title() == "ZelEngine - ZelEngineProject_01", f"the title is '{program.title()}'")

    for part in ("project.zel", os.path.join("Files", "Scenes", "Main.scene")):
        check(content("ZelEngineProject_01", part) == content("ZelEngineProject_01_Build", part), f"{part} differs")
    with running(build, "ZelGame.exe") as game:
        check(game.title() == "ZelGame", f"the title is '{game.title()}'")
        game.picture().save("built_game")
    os.remove(os.path.join(build, "project.zel"))
    with running(build, "ZelGame.exe") as program:
        check(program.title() == HUB_TITLE, f"without project.zel the title is '{program.title()}'")


def projects_leave_the_list_and_go_into_the_bin_only_after_yes():
    forget_everything()
    with running() as program:
        for name in ("ZelEngineProject", "ZelEngineProject_01"):
            program.click(*EMPTY_CARD)
            answer(program, "Browse for Folder", "Return")
            wait_for_title(program, "ZelEngine - " + name)
            program.click(*HUB_BUTTON)
            wait_for_title(program, HUB_TITLE)

        def choose(item):
            program.see(program.click, *FIRST_ROW, 3)
            program.click(FIRST_ROW[0] + item[0], FIRST_ROW[1] + item[1])

        choose(REMOVE_ITEM)
        wait_for(lambda: recent_projects()[0] == "ZelEngineProject", "the list without the removed project")
        check(os.path.isdir(at_home("ZelEngineProject_01")), "a removed project stays on the disk")
        choose(DELETE_ITEM)
        answer(program, "ZelEngine - smazat projekt", "Return")  # No is the default
        check(os.path.isdir(at_home("ZelEngineProject")), "after No the project stays")
        check(recent_projects()[0] == "ZelEngineProject", "after No the project stays listed")
        choose(DELETE_ITEM)
        answer(program, "ZelEngine - smazat projekt", "alt+y")
        wait_for(lambda: not os.path.exists(at_home("ZelEngineProject")), "the deleted project's end")
        wait_for(lambda: "ZelEngineProject" not in recent_projects(), "the list without the deleted project")
        check(glob.glob(at_home(".local", "share", "Trash", "files", "ZelEngineProject*")), "it is not in the bin")


def a_long_build_shows_how_far_it_is_takes_no_input_and_ends_by_escape():
    forget_everything()
    with running() as program:
        program.click(*EMPTY_CARD)
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        for number in range(30000):
            with open(at_home("ZelEngineProject", "Files", "imported", f"{number}.txt"), "w", encoding="utf-8"):
                pass
        before = program.picture()
        program.click(*BUILD_BUTTON)
        wait_for(lambda: active_title() == "Browse for Folder", "the folder dialog")
        program.press("Return")
        build = at_home("ZelEngineProject_Build")
        wait_for(lambda: program.picture().share_equal_to(before, BAR) < 0.9, "the bar")
        shown = program.picture()
        shown.save("long_build")
        check(os.path.isdir(os.path.join(build, "Files", "imported")), "nothing is copied")
        program.press("g", "Escape")
        wait_for(lambda: not os.path.exists(build), "the removal of what was copied")
        program.press("ctrl+s")
        wait_for(lambda: program.process.poll() is None and program.picture().share_equal_to(shown, BAR) < 0.9,
                 "the picture without the bar")
        check(scene_objects("ZelEngineProject", "Files", "Scenes", "Main.scene") ==
              ["Game Camera", "Directional Light"], "the key pressed meanwhile added an object")
        program.press("Escape")
        check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")


def what_escape_left_unsaved_lies_beside_its_scene_when_the_project_opens_again():
    forget_everything()
    main = ("ZelEngineProject", "Files", "Scenes", "Main.scene")
    with running() as program:
        program.click(*EMPTY_CARD)
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        program.press("g", "Escape")
        check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")
    check(scene_objects(*main) == ["Game Camera", "Directional Light"], "the scene itself has changed")
    check(not os.path.exists(at_home(*main[:-1], "Main_neulozeno.scene")), "a copy before the project was opened")
    with running(forget=False) as program:
        program.click(*FIRST_ROW)
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        check(scene_objects(*main[:-1], "Main_neulozeno.scene") ==
              ["Game Camera", "Directional Light", "GameObject_02"], "the copy holds something else")
        program.click(*FILES_TAB)
        program.see(program.double_click, *SECOND_CELL)  # the folder Scenes
        time.sleep(1)  # or the next press would be part of this double click
        program.double_click(*SECOND_CELL)  # the copy, behind Main.scene
        answer(program, "ZelEngine", "alt+n")
        program.press("ctrl+s")
        wait_for(lambda: b"Main_neulozeno.scene" in content("ZelEngineProject", "project.zel"), "the opened copy")
        program.press("Escape")
        check(program.exit_code() == 0, f"the exit code is {program.process.returncode}")
    with running(forget=False) as program:
        program.click(*FIRST_ROW)
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        names = sorted(os.listdir(at_home(*main[:-1])))
        check(names == ["Main.scene", "Main_neulozeno.scene"], f"after a run without changes there is {names}")


def a_scene_that_was_written_by_somebody_else_is_kept_beside_the_saved_one():
    forget_everything()
    scenes = ("ZelEngineProject", "Files", "Scenes")
    theirs = b"ZELENGINE_SCENE\t1\r\nsomebody else's\r\n"
    with running() as program:
        program.click(*EMPTY_CARD)
        answer(program, "Browse for Folder", "Return")
        wait_for_title(program, "ZelEngine - ZelEngineProject")
        with open(at_home(*scenes, "Main.scene"), "wb") as file:
            file.write(theirs)
        program.press("g", "ctrl+s")
        wait_for(lambda: os.path.exists(at_home(*scenes, "Main_jine.scene")), "their version")
        wait_for(lambda: content(*scenes, "Main.scene") != theirs, "the saved scene")
        check(content(*scenes, "Main_jine.scene") == theirs, "their version has changed")
        check(scene_objects(*scenes, "Main.scene")[2:] == ["GameObject_02"], "the saved scene holds something else")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        both_templates_make_projects_that_a_restart_lists_and_opens,
        a_project_saved_under_a_new_folder_is_built_into_a_game_that_starts,
        projects_leave_the_list_and_go_into_the_bin_only_after_yes,
        a_long_build_shows_how_far_it_is_takes_no_input_and_ends_by_escape,
        what_escape_left_unsaved_lies_beside_its_scene_when_the_project_opens_again,
        a_scene_that_was_written_by_somebody_else_is_kept_beside_the_saved_one,
    ]) else 1)
