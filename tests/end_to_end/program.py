"""The program in its real window: started, driven with keys and mouse, observed by its pixels."""

import contextlib
import glob
import os
import re
import shutil
import subprocess
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
STAGE = os.path.join(ROOT, "build", "stage", "ZelEngine")
SCREENSHOTS = os.path.join(ROOT, "build", "screenshots")
START_SECONDS = 60
REACTION_SECONDS = 20
HUB_TITLE = "ZelEngine - Projects"
FIRST_PROJECT = (560, 200)  # its row in the Project Hub at the window's first size


class Failure(Exception):
    """What a test says when its claim does not hold."""


def check(holds, claim):
    if not holds:
        raise Failure(claim)


def wait_for(question, claim, seconds=REACTION_SECONDS):
    """The first true answer to `question`."""
    end = time.monotonic() + seconds
    while True:
        answer = question()
        if answer:
            return answer
        check(time.monotonic() < end, f"waited {seconds} s in vain: {claim}")
        time.sleep(0.05)


def output_of(*command):
    """What a command prints; empty when it fails."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    return done.stdout if done.returncode == 0 else b""


class Picture:
    """The pixels of a window at one moment, red, green and blue."""

    def __init__(self, png):
        self.png = png
        convert = ["convert", "png:-", "-depth", "8"]
        size = subprocess.run(convert + ["-format", "%w %h", "info:"], input=png, capture_output=True, check=True)
        self.width, self.height = (int(number) for number in size.stdout.split())
        self.rgb = subprocess.run(convert + ["rgb:-"], input=png, capture_output=True, check=True).stdout

    @classmethod
    def of_file(cls, path):
        with open(path, "rb") as file:
            return cls(file.read())

    def at(self, x, y):
        start = (y * self.width + x) * 3
        return tuple(self.rgb[start:start + 3])

    def pixels(self, part=None):
        """Of the part from (left, top) to (right, bottom), or of all."""
        left, top, right, bottom = part or (0, 0, self.width, self.height)
        rows = (self.rgb[(y * self.width + left) * 3:(y * self.width + right) * 3] for y in range(top, bottom))
        return [row[i:i + 3] for row in rows for i in range(0, len(row), 3)]

    def colors(self):
        return len(set(self.pixels()))

    def is_blank(self):
        return self.colors() < 3

    def share_equal_to(self, other, part=None):
        """How much of the picture or its part is the same, 0 to 1. Pictures of different sizes share nothing."""
        if (self.width, self.height) != (other.width, other.height):
            return 0
        pixels = self.pixels(part)
        return sum(mine == theirs for mine, theirs in zip(pixels, other.pixels(part))) / len(pixels)

    def save(self, name):
        os.makedirs(SCREENSHOTS, exist_ok=True)
        path = os.path.join(SCREENSHOTS, name + ".png")
        with open(path, "wb") as file:
            file.write(self.png)
        return path


class Program:
    def __init__(self, folder, executable="ZelEngine.exe"):
        self.process = subprocess.Popen(["wine", executable], cwd=folder, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.window = ""

    def find_window(self):
        check(self.process.poll() is None, f"the program ended with code {self.process.returncode}")
        found = output_of("xdotool", "search", "--onlyvisible", "--name", "^Zel(Engine|Game)").decode().split()
        return found[0] if found else ""

    def wait_for_window(self):
        self.window = wait_for(self.find_window, "a window", START_SECONDS)
        wait_for(lambda: not self.picture().is_blank(), "a picture in the window")
        self.focus()

    def has_focus(self):
        return output_of("xdotool", "getactivewindow").decode().strip() == self.window

    def focus(self):
        subprocess.run(["xdotool", "windowactivate", self.window], check=True)
        wait_for(self.has_focus, "the focus")

    def title(self):
        return output_of("xdotool", "getwindowname", self.window).decode().rstrip("\n")

    def client_size(self):
        text = output_of("xdotool", "getwindowgeometry", "--shell", self.window).decode()
        values = dict(line.split("=") for line in text.split())
        return int(values["WIDTH"]), int(values["HEIGHT"])

    def picture(self):
        return Picture(wait_for(lambda: output_of("import", "-window", self.window, "png:-"), "a screenshot"))

    def press(self, *keys):
        """Real key presses, to the window that has the focus. Names as xdotool knows them: "ctrl+s", "F10"."""
        subprocess.run(["xdotool", "key", "--delay", "60", *keys], check=True)

    @contextlib.contextmanager
    def holding(self, *keys):
        """Keys that are down meanwhile."""
        subprocess.run(["xdotool", "keydown", *keys], check=True)
        try:
            yield
        finally:
            subprocess.run(["xdotool", "keyup", *keys], check=True)

    def type_text(self, text):
        subprocess.run(["xdotool", "type", "--delay", "60", "--", text], check=True)

    def open_first_project(self):
        """By a click in the Project Hub."""
        self.click(*FIRST_PROJECT)
        wait_for(lambda: self.title().startswith("ZelEngine - ") and self.title() != HUB_TITLE, "an open project")
        self.steady_pixels()

    def move(self, x, y):
        subprocess.run(["xdotool", "mousemove", "--window", self.window, str(x), str(y)], check=True)

    def mouse_down(self, x, y, button=1):
        self.move(x, y)
        subprocess.run(["xdotool", "mousedown", str(button)], check=True)

    def mouse_up(self, x, y, button=1):
        self.move(x, y)
        subprocess.run(["xdotool", "mouseup", str(button)], check=True)

    def click(self, x, y, button=1):
        self.move(x, y)
        subprocess.run(["xdotool", "click", str(button)], check=True)

    def double_click(self, x, y):
        self.move(x, y)
        subprocess.run(["xdotool", "click", "--repeat", "2", "--delay", "60", "1"], check=True)

    def drag(self, start, end, button=1, steps=8):
        """From one point to another, with moves between them as a hand makes them."""
        self.mouse_down(*start, button)
        for step in range(1, steps):
            self.move(*(a + (b - a) * step // steps for a, b in zip(start, end)))
        self.mouse_up(*end, button)

    def pixels(self):
        return wait_for(lambda: output_of("import", "-window", self.window, "-depth", "8", "rgb:-"), "a screenshot")

    def steady_pixels(self):
        """What the window shows once nothing in it moves any more."""
        seen = []

        def is_steady():
            seen.append(self.pixels())
            return len(seen) > 1 and seen[-1] == seen[-2]

        wait_for(is_steady, "a window in which nothing moves")
        return seen[-1]

    def see(self, act, *arguments):
        """Acts, waits until that has changed what the window shows, and until the change is complete."""
        before = self.steady_pixels()
        act(*arguments)
        wait_for(lambda: self.pixels() != before, f"the window to show {act.__name__}{arguments}")
        self.steady_pixels()

    def resize(self, width, height):
        subprocess.run(["xdotool", "windowsize", self.window, str(width), str(height)], check=True)

    def exit_code(self):
        wait_for(lambda: self.process.poll() is not None, "the program's end")
        return self.process.returncode

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        # The started process is Wine's own; the program may outlive it.
        subprocess.run(["wineserver", "--kill"], check=False)
        subprocess.run(["wineserver", "--wait"], check=False)


def forget_recent_projects():
    for folder in glob.glob(os.path.join(os.environ["WINEPREFIX"], "drive_c/users/*/AppData/Local/ZelEngine")):
        shutil.rmtree(folder)


@contextlib.contextmanager
def running(folder=STAGE, executable="ZelEngine.exe", forget=True):
    """The program with its window open and its first picture drawn, as on a first start unless it remembers."""
    if forget:
        forget_recent_projects()
    program = Program(folder, executable)
    try:
        program.wait_for_window()
        yield program
    finally:
        program.stop()


def run_tests(tests):
    """Runs functions as tests, prints a line for each. True when all pass."""
    failed = 0
    for test in tests:
        name = re.sub("_", " ", test.__name__)
        try:
            test()
            print(f"PASS {name}", flush=True)
        except Exception as failure:  # pylint: disable=broad-except
            failed += 1
            print(f"FAIL {name}: {type(failure).__name__}: {failure}", flush=True)
    return failed == 0
