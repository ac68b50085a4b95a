#!/usr/bin/env python3
"""The first window on displays too small for it. Run with ZEL_SCREEN naming the display's size."""

import os
import re
import sys

from program import check, output_of, run_tests, running


def window_place(program):
    """Left, top, right and bottom of the window with its frame, in pixels of the display."""
    text = output_of("xwininfo", "-id", program.window, "-frame").decode()
    numbers = {name: int(value) for name, value in
               re.findall(r"(Absolute upper-left X|Absolute upper-left Y|Width|Height): +(-?\d+)", text)}
    left, top = numbers["Absolute upper-left X"], numbers["Absolute upper-left Y"]
    return left, top, left + numbers["Width"], top + numbers["Height"]


def the_first_window_lies_inside_the_display_and_uses_most_of_it():
    width, height = (int(side) for side in os.environ["ZEL_SCREEN"].split("x"))
    with running() as program:
        program.picture().save(f"hub_on_{width}x{height}")
        left, top, right, bottom = window_place(program)
        place = f"it lies at {left}, {top} to {right}, {bottom}"
        check(left >= 0 and top >= 0 and right <= width and bottom <= height, place)
        check(right - left >= min(width, 1360) * 0.9 and bottom - top >= min(height, 820) * 0.9, place)


if __name__ == "__main__":
    sys.exit(0 if run_tests([the_first_window_lies_inside_the_display_and_uses_most_of_it]) else 1)
