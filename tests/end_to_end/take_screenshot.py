#!/usr/bin/env python3
"""Starts the staged program, saves what it shows, ends it."""

import os
import sys

from program import ROOT, Failure, running

if __name__ == "__main__":
    try:
        with running() as program:
            print("Screenshot:", os.path.relpath(program.picture().save("run"), ROOT))
    except Failure as failure:
        sys.exit(f"The program showed no window: {failure}")
