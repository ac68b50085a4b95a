#!/usr/bin/env python3
"""Plays, edits, opens and closes prefabs, Blueprints and scenes in the real window, and counts what the program holds.

Two minutes, or as many as the first argument says."""

import os
import shutil
import sys
import tempfile
import time

from program import ROOT, STAGE, check, output_of, run_tests, running, wait_for

BOTTOM_TOP = 820 - 132
FILES_TAB, FILES_UP = (60, BOTTOM_TOP + 24), (36, BOTTOM_TOP + 59)
BLUEPRINTS, PREFABS, SCENES = 0, 2, 3  # their cells in the folder of the sample's files
FIRST_OBJECT = (120, 92 + 9)
COUNTER = os.path.join(ROOT, "build", "windows", "tests", "process_counts.exe")

MINUTES = float(sys.argv[1]) if len(sys.argv) > 1 else 2
SETTLED_SECONDS = 60  # what is kept by then may stay
MORE_BYTES = 8 << 20  # what the allocator may hold besides


def cell(index):
    return 18 + 108 * index + 49, BOTTOM_TOP + 82 + 20


def resident_bytes(program):
    with open(f"/proc/{program.process.pid}/status", encoding="ascii") as file:
        values = dict(line.split(":", 1) for line in file)
    check(values["Name"].strip() == "ZelEngine.exe", f"the process is {values['Name'].strip()}")
    return int(values["VmRSS"].split()[0]) * 1024


def counts(program):
    """Handles, GDI objects and resident bytes of the running program."""
    words = output_of("wine", COUNTER).decode().split()
    check(len(words) == 4, "the program cannot be counted")
    return int(words[1]), int(words[3]), resident_bytes(program)


def play(program):
    program.press("p")
    with program.holding("d"):
        time.sleep(1)
    with program.holding("w"):
        time.sleep(1)
    program.press("p")
    program.steady_pixels()


def edit(program):
    program.see(program.click, *FIRST_OBJECT)
    program.see(program.press, "ctrl+d")
    program.see(program.press, "Delete")
    program.see(program.press, "ctrl+z")
    program.see(program.press, "ctrl+z")


def open_and_leave(program, folder, item):
    program.see(program.double_click, *cell(folder))
    program.see(program.double_click, *cell(item))
    program.see(program.press, "Escape")
    program.see(program.click, *FILES_UP)


def active_title():
    return output_of("xdotool", "getactivewindow", "getwindowname").decode().strip()


def open_scene(program, item):
    program.double_click(*cell(item))
    wait_for(lambda: active_title() == "ZelEngine", "the question whether to save")
    program.press("alt+n")
    wait_for(program.has_focus, "the program's window after the question")
    program.steady_pixels()


def use_everything(program):
    play(program)
    edit(program)
    open_and_leave(program, PREFABS, 2)
    open_and_leave(program, BLUEPRINTS, 0)
    program.see(program.double_click, *cell(SCENES))
    open_scene(program, 0)  # Level2
    open_scene(program, 1)  # Main
    program.see(program.click, *FILES_UP)


def what_the_program_holds_after_long_use_is_what_it_held_at_first():
    with tempfile.TemporaryDirectory(prefix="zel_soak_", dir=os.path.join(ROOT, "build")) as folder:
        shutil.copytree(STAGE, folder, dirs_exist_ok=True)
        with running(folder) as program:
            program.open_first_project()
            program.see(program.click, *FILES_TAB)
            start, rounds, first = time.monotonic(), 0, None
            while first is None or time.monotonic() < start + MINUTES * 60:
                use_everything(program)
                rounds += 1
                if first is None and time.monotonic() >= start + SETTLED_SECONDS:
                    first = counts(program)
            use_everything(program)
            last = counts(program)
            print(f"{rounds + 1} rounds; handles, GDI objects, bytes: {first} at first, {last} in the end")
            check(first[0] > 0 and first[1] > 0, "nothing was counted")
            check(last[0] <= first[0], f"{last[0]} handles in place of {first[0]}")
            check(last[1] <= first[1], f"{last[1]} GDI objects in place of {first[1]}")
            check(last[2] <= first[2] + MORE_BYTES, f"{last[2]} bytes in place of {first[2]}")


if __name__ == "__main__":
    sys.exit(0 if run_tests([what_the_program_holds_after_long_use_is_what_it_held_at_first]) else 1)
