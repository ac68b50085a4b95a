#!/usr/bin/env python3
"""Programs that are killed while they save: every file is whole afterwards, the old one or the new one.

As many saves as there is time for, at most 500: in 100 seconds, or in as many as the first argument says."""

import glob
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

from program import ROOT, STAGE, check, forget_recent_projects, run_tests, running, wait_for

SAVING_PROGRAM = os.path.join(ROOT, "build", "windows", "tests", "saving_program.exe")
KILLS = 500
KILLS_OF_THE_EDITOR = 10
KILLS_OF_RECOVERIES = 200
MARK = b"\xEF\xBB\xBF"
# Of the kills; on a busy machine there are fewer of them.
LONGEST_SECONDS = float(sys.argv[1]) if len(sys.argv) > 1 else 100
LONGEST_SECONDS_OF_THE_EDITOR = 30
FEWEST_KILLS, FEWEST_KILLS_OF_THE_EDITOR = 50, 2
LONGEST_WAIT = 0.03  # seconds, of some saves of the program
LONGEST_REACTION = 0.07  # seconds from a key to the middle of the save that it asks for
COLUMNS = 61


def kills(most, fewest, seconds):
    """Counts up to `most`, and beyond `fewest` only while there is time."""
    end = time.monotonic() + seconds
    for kill in range(most):
        if kill >= fewest and time.monotonic() > end:
            return
        yield kill


def content(*parts):
    with open(os.path.join(*parts), "rb") as file:
        return file.read()


def scratch_folder():
    return tempfile.TemporaryDirectory(prefix="zel_kill_", dir=os.path.join(ROOT, "build"))


def windows_path(path):
    return "Z:" + path.replace("/", "\\")


def leftovers(folder):
    return [name for name in os.listdir(folder) if name.startswith("~")]


def write_versions(folder):
    """Two scenes that were loaded again, as bytes."""
    command = ["wine", SAVING_PROGRAM, windows_path(folder), "versions"]
    check(subprocess.run(command, check=False).returncode == 0, "a scene cannot be loaded")
    return content(folder, "A.scene"), content(folder, "B.scene")


def save_until_killed(folder, seconds, *mode):
    """Starts to save, and ends it at some moment. What was in the folder after the first save."""
    with subprocess.Popen(["wine", SAVING_PROGRAM, windows_path(folder), *mode], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
        try:
            line = process.stdout.readline().split()
            time.sleep(seconds)
        finally:
            process.kill()
    check(len(line) == 2 and line[0] == b"saved", f"the first save says {line}")
    return int(line[1])


def a_killed_save_leaves_the_old_scene_or_the_new_one_and_at_most_one_leftover_until_the_next_save():
    moments = random.Random(20261121)
    with scratch_folder() as folder:
        versions = write_versions(folder)
        seen = [0, 0]
        broken_off = 0
        for kill in kills(KILLS, FEWEST_KILLS, LONGEST_SECONDS):
            files = save_until_killed(folder, moments.uniform(0, LONGEST_WAIT))
            check(files == 3, f"before kill {kill} the first save left {files} files in place of 3")
            scene = content(folder, "Main.scene")
            check(scene in versions, f"kill {kill} left a scene of {len(scene)} bytes that is neither version")
            seen[versions.index(scene)] += 1
            found = leftovers(folder)
            check(len(found) <= 1, f"kill {kill} left {found}")
            broken_off += len(found)
        print(f"{sum(seen)} kills: {broken_off} within the writing of a file; "
              f"then {seen[0]} scenes of version A and {seen[1]} of B")
        check(broken_off > sum(seen) // 50 and min(seen) > sum(seen) // 50, "the kills did not meet the saves")


def recoveries():
    """Their names and bytes, with what is beside them."""
    [data] = glob.glob(os.path.join(os.environ["WINEPREFIX"], "drive_c/users/*/AppData/Local"))
    folder = os.path.join(data, "ZelEngine", "recovery")
    return {name: content(folder, name) for name in os.listdir(folder)}


def work_that_is_not_saved_survives_every_kill_in_a_whole_recovery():
    moments = random.Random(20261123)
    forget_recent_projects()
    with scratch_folder() as folder:
        versions = write_versions(folder)
        head = f"ZELENGINE_RECOVERY\t{windows_path(folder)}\\Main.scene\r\n".encode()
        expected = [MARK + head + version.removeprefix(MARK) for version in versions]
        broken_off = done = 0
        for kill in kills(KILLS_OF_RECOVERIES, FEWEST_KILLS, LONGEST_SECONDS):
            save_until_killed(folder, moments.uniform(0, LONGEST_WAIT), "recovery")
            done += 1
            found = recoveries()
            whole = [name for name in found if not name.startswith("~")]
            check(1 <= len(whole) <= 20, f"kill {kill} left {sorted(found)}")
            damaged = [name for name in whole if found[name] not in expected]
            check(not damaged, f"kill {kill} left {damaged} neither as version A nor as B")
            broken_off += len(found) - len(whole)
        print(f"{done} kills: {broken_off} within the writing of a recovery, none lost")
        check(broken_off > done // 50, "the kills did not meet the writing")


def is_whole(now, before):
    """The file of before, or the same with one more object line."""
    added = now[len(before):]
    one_line = added.endswith(b"\r\n") and added.count(b"\n") == 1 and added.count(b"\t") == COLUMNS - 1
    return now == before or (now.startswith(before) and one_line)


def save_by_key(program, project):
    before = os.stat(os.path.join(project, "project.zel")).st_mtime_ns
    program.press("ctrl+s")
    wait_for(lambda: os.stat(os.path.join(project, "project.zel")).st_mtime_ns != before, "a saved project")


def a_killed_editor_leaves_a_project_that_opens_with_every_file_whole():
    moments = random.Random(20261122)
    with scratch_folder() as folder:
        scenes = os.path.join(folder, "Project", "Files", "Scenes")
        os.makedirs(scenes)
        write_versions(scenes)
        os.rename(os.path.join(scenes, "A.scene"), os.path.join(scenes, "Main.scene"))
        os.remove(os.path.join(scenes, "B.scene"))
        project = os.path.join(folder, "Project")
        with open(os.path.join(project, "project.zel"), "wb") as file:
            file.write(b"ZELENGINE_PROJECT\t1\r\nFILES\tFiles\r\nCURRENT_SCENE\tFiles\\Scenes\\Main.scene\r\n")
        shutil.copytree(os.path.join(STAGE, "assets"), os.path.join(folder, "assets"))
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), folder)

        files = ((scenes, "Main.scene"), (project, "project.zel"))
        met = 0
        for kill in kills(KILLS_OF_THE_EDITOR, FEWEST_KILLS_OF_THE_EDITOR, LONGEST_SECONDS_OF_THE_EDITOR):
            with running(folder) as program:
                program.open_first_project()
                save_by_key(program, project)
                for place, _ in files:
                    check(not leftovers(place), f"before kill {kill} a save left {leftovers(place)}")
                before = [content(*file) for file in files]
                program.press("ctrl+d")
                with subprocess.Popen(["xdotool", "key", "ctrl+s"]):
                    time.sleep(moments.uniform(0, LONGEST_REACTION))
                    program.process.kill()
                    program.process.wait()
            for file, old in zip(files, before):
                now = content(*file)
                check(is_whole(now, old), f"kill {kill} left {len(now)} bytes of {file[1]} after {len(old)}")
            left = sum(len(leftovers(place)) for place, _ in files)
            check(left <= 1, f"kill {kill} left {left} temporary files")
            changed = sum(content(*file) != old for file, old in zip(files, before))
            met += left > 0 or changed == 1
        print(f"{kill + 1} kills of the editor: {met} between the first byte and the last of a save")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        a_killed_save_leaves_the_old_scene_or_the_new_one_and_at_most_one_leftover_until_the_next_save,
        work_that_is_not_saved_survives_every_kill_in_a_whole_recovery,
        a_killed_editor_leaves_a_project_that_opens_with_every_file_whole,
    ]) else 1)
