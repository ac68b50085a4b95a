#!/usr/bin/env python3
"""The start of the program and its memory, against an empty program that opens a window of the same size.

Both are started in turn. The time runs from the making of the process to the moment when the middle of the screen,
which either window covers, shows what the window shows there in the end.
"""

import ctypes
import os
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tests", "end_to_end"))
from program import STAGE, check, running, wait_for  # noqa: E402

EMPTY = os.path.join(ROOT, "build", "windows", "benchmarks", "zel_empty_window.exe")
PROGRAM = os.path.join(STAGE, "ZelEngine.exe")
ROUNDS = 15
SECONDS = 30  # until a start counts as failed
Z_PIXMAP = 2


class Screen:
    """Single pixels of the display, read without the cost of a picture."""

    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XGetImage.restype = ctypes.c_void_p
        self.x11.XGetPixel.restype = ctypes.c_ulong
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))
        self.middle = [size(self.display, 0) // 2 for size in (self.x11.XDisplayWidth, self.x11.XDisplayHeight)]

    def middle_pixel(self):
        all_planes = ctypes.c_ulong(0xFFFFFFFF)
        image = ctypes.c_void_p(self.x11.XGetImage(self.display, self.root, *self.middle, 1, 1, all_planes, Z_PIXMAP))
        pixel = self.x11.XGetPixel(image, 0, 0) & 0xFFFFFF
        self.x11.XDestroyImage(image)
        return pixel


def peak_memory(process):
    """In megabytes, of the process that was started: Wine runs the program in it."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        lines = dict(line.split(":", 1) for line in status)
    check(lines["Name"].strip().lower().startswith("zel"), f"the process is {lines['Name']}")
    return int(lines["VmHWM"].split()[0]) / 1024


class Peer:
    """A program and what it shows in the middle of the screen."""

    def __init__(self, executable, folder, screen):
        self.executable, self.folder, self.screen = executable, folder, screen
        self.free = screen.middle_pixel()
        self.shown = None
        self.milliseconds = []
        self.memory = 0

    def run(self, use):
        wait_for(lambda: self.screen.middle_pixel() == self.free, "a free screen")
        start = time.monotonic()
        process = subprocess.Popen(["wine", self.executable], cwd=self.folder, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            use(process, start)
        finally:
            process.kill()
            process.wait()

    def look(self, process, _):
        """What the window shows in the end, and what it took."""
        wait_for(lambda: self.screen.middle_pixel() != self.free, "a window", SECONDS)
        time.sleep(3)
        self.shown = self.screen.middle_pixel()
        check(self.shown != self.free, "the window shows the screen's own colour")
        self.memory = peak_memory(process)

    def measure(self, _, start):
        while self.screen.middle_pixel() != self.shown:
            check(time.monotonic() < start + SECONDS, "the first picture did not come")
            time.sleep(0.0005)
        self.milliseconds.append((time.monotonic() - start) * 1000)

    def median(self):
        return statistics.median(self.milliseconds)


def memory_with_default_scene():
    """A folder without a project file opens with the default scene."""
    with tempfile.TemporaryDirectory() as folder:
        os.makedirs(os.path.join(folder, "Project", "Files"))
        with running(folder, PROGRAM) as program:
            program.open_first_project()
            return peak_memory(program.process)


def main():
    screen = Screen()
    peers = empty, program = Peer(EMPTY, ROOT, screen), Peer(PROGRAM, STAGE, screen)
    for peer in peers:
        peer.run(peer.look)
    for _ in range(ROUNDS):
        for peer in peers:
            peer.run(peer.measure)
    with_scene = memory_with_default_scene()

    print(f"From the process to the first picture: medians of {ROUNDS}, and parts of the empty window's")
    for name, peer in (("empty window", empty), ("ZelEngine, Project Hub", program)):
        print(f"{name:28} {peer.median():8.1f} ms {peer.median() / empty.median():7.2f}")
    print("Most memory at a time, and how much more than the empty window")
    for name, memory in (("empty window", empty.memory), ("ZelEngine, Project Hub", program.memory),
                         ("ZelEngine, default scene", with_scene)):
        print(f"{name:28} {memory:8.1f} MB {memory - empty.memory:+7.1f}")


if __name__ == "__main__":
    main()
