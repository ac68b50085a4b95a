#!/usr/bin/env python3
"""What the program asks of the processor while it is open: at rest, under a moving pointer, looking around, playing.

Processor time per second by the clock, of the program's process alone, beside an empty window's loop.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tests", "end_to_end"))
from program import STAGE, check, output_of, running, wait_for  # noqa: E402

EMPTY = os.path.join(ROOT, "build", "windows", "benchmarks", "zel_empty_window.exe")
PROGRAM = os.path.join(STAGE, "ZelEngine.exe")
SECONDS = 5
STEPS_PER_SECOND = 60  # of a moving pointer
TICKS = os.sysconf("SC_CLK_TCK")


def processor_seconds(process):
    with open(f"/proc/{process.pid}/stat", encoding="ascii") as stat:
        fields = stat.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS  # in user and in system mode


def load(process, act=lambda: None):
    """The share of one core that the process takes while `act` goes on."""
    ends = time.monotonic() + SECONDS
    mover = threading.Thread(target=lambda: [act() for _ in iter(lambda: time.monotonic() < ends, False)])
    start, used = time.monotonic(), processor_seconds(process)
    mover.start()
    while time.monotonic() < ends:
        time.sleep(0.05)
    mover.join()
    return (processor_seconds(process) - used) / (time.monotonic() - start)


def memory(process):
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        lines = dict(line.split(":", 1) for line in status)
    return int(lines["VmRSS"].split()[0]) / 1024


def circle(program, center):
    """Moves of a pointer around a point."""
    places = [(0, 0), (20, 0), (40, 0), (40, 20), (40, 40), (20, 40), (0, 40), (0, 20)]
    number = [0]

    def step():
        number[0] += 1
        dx, dy = places[number[0] % len(places)]
        program.move(center[0] + dx, center[1] + dy)
        time.sleep(1 / STEPS_PER_SECOND)

    return step


def empty_window_load():
    process = subprocess.Popen(["wine", EMPTY, "loop"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        wait_for(lambda: output_of("xdotool", "search", "--onlyvisible", "--name", "^Empty window"), "a window")
        time.sleep(2)
        return load(process)
    finally:
        process.kill()
        process.wait()


def main():
    empty = empty_window_load()
    rows = [("empty window's loop", empty)]
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(os.path.join(STAGE, "Project"), os.path.join(folder, "Project"))
        with running(folder, PROGRAM) as program:
            process = program.process
            time.sleep(2)
            rows.append(("Project Hub at rest", load(process)))
            program.open_first_project()
            time.sleep(2)
            rows.append(("editor at rest", load(process)))
            resident = memory(process)
            rows.append(("pointer moving over the editor", load(process, circle(program, (1100, 300)))))
            program.mouse_down(640, 300, 3)
            rows.append(("looking around", load(process, circle(program, (640, 300)))))
            program.mouse_up(640, 300, 3)
            program.press("p")
            time.sleep(1)
            rows.append(("sample playing", load(process)))
            check(process.poll() is None, "the program ended")

    print(f"Processor time per second, of one core, over {SECONDS} s, and times the empty window's loop")
    for name, share in rows:
        print(f"{name:34} {share * 100:7.1f} % {share / max(empty, 1e-9):8.1f}")
    print(f"Resident memory with the sample: {resident:.1f} MB")


if __name__ == "__main__":
    main()
