#!/usr/bin/env python3
"""Files that are far too large, and images that promise too much, given to the product's own readers."""

import os
import struct
import subprocess
import sys
import tempfile
import zlib

from program import ROOT, check, run_tests

LOADING_PROGRAM = os.path.join(ROOT, "build", "windows", "tests", "loading_program.exe")
MEGABYTE = 1_000_000
TRIANGLE = b"v 0 0 0\nv 1 0 0\nv 0 1 0\n"
# A line of as few columns as an object may have, which needs the most memory for its bytes.
SHORTEST_OBJECT = b"O" + b"\t" * 29 + b"\n"


def scratch_folder():
    return tempfile.TemporaryDirectory(prefix="zel_hostile_", dir=os.path.join(ROOT, "build"))


def put(folder, name, begin, repeated, times):
    path = os.path.join(folder, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(begin)
        for _ in range(times):
            file.write(repeated)
    return path


def load(path, memory=None, window=None):
    """What the program says of a file, or of a window of as many pixels on each side, with as many bytes of memory, and
    the most that it used of it."""
    limit = [] if memory is None else ["prlimit", f"--data={memory}"]
    asked = ["-", str(window)] if window else ["Z:" + path.replace("/", "\\")]
    with subprocess.Popen(limit + ["wine", LOADING_PROGRAM] + asked, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
        said = process.stdout.read().decode().strip()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    check(process.returncode == 0, f"{os.path.basename(path)}: exit code {process.returncode}, says '{said}'")
    return said, usage.ru_maxrss * 1024


def png(path, width, height):
    """A whole image, of white pixels that pack well."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    packer = zlib.compressobj(1)
    row = b"\0" + b"\xFF" * (4 * width)
    packed = b"".join(packer.compress(row) for _ in range(height)) + packer.flush()
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1A\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)) +
                   chunk(b"IDAT", packed) + chunk(b"IEND", b""))
    return path


def an_image_beyond_64_million_pixels_is_refused_before_memory_is_taken_for_them():
    with scratch_folder() as folder:
        said, _ = load(png(os.path.join(folder, "fits.png"), 1000, 1000))
        check(said == "loaded 1000000", f"an image of a million pixels: '{said}'")
        said, peak = load(png(os.path.join(folder, "large.png"), 8001, 8000))
        check(said == "refused", f"an image of 64,008,000 pixels: '{said}'")
        check(peak < 100 * MEGABYTE, f"an image of 256 megabytes used {peak} bytes")


def a_file_of_many_megabytes_loads_where_there_is_memory_for_it():
    with scratch_folder() as folder:
        cases = {
            "vertices.obj": (TRIANGLE, b"v 1 2 3\n" * 1000 + b"f 1 2 3\n" * 1000, 1000, 1_000_000),
            "one_fan.obj": (TRIANGLE, b"f" + b" 1 2 3" * 160 + b"\n", 20_000, 20_000 * 478),
            "objects.scene": (b"ZELENGINE_SCENE\t1\n", SHORTEST_OBJECT * 100, 5000, 500_000),
            "objects.prefab": (b"ZELENGINE_PREFAB\t1\n", SHORTEST_OBJECT * 100, 5000, 500_000),
            # Read in pieces of 8,191 units, an odd number: only every other one begins with a tag.
            "one_line.scene": (b"", b"O\t" * 1000, 10_000, 1221),
            "objects/project.zel": (b"CURRENT_SCENE\tno.scene\n", SHORTEST_OBJECT * 100, 5000, 500_000),
            "nodes.blueprint": (b"ZELENGINE_BLUEPRINT\t1\n", b"NODE\t1\t\t1\t1\n" * 100, 5000, 500_000),
        }
        for name, (begin, repeated, times, count) in cases.items():
            said, _ = load(put(folder, name, begin, repeated, times))
            check(said == f"loaded {count}", f"{name}: '{said}' in place of {count}")


def a_file_that_memory_does_not_suffice_for_is_refused():
    with scratch_folder() as folder:
        small = put(folder, "small.obj", TRIANGLE, b"f 1 2 3\n", 1)
        check(load(small, 100 * MEGABYTE)[0] == "loaded 1", "there is no memory for the program itself")
        for name, begin, repeated in (("faces.obj", TRIANGLE, b"f" + b" 1 2 3" * 160 + b"\n"),
                                      ("objects.scene", b"", SHORTEST_OBJECT * 30),
                                      ("objects.prefab", b"", SHORTEST_OBJECT * 30),
                                      ("objects/project.zel", b"CURRENT_SCENE\tno.scene\n", SHORTEST_OBJECT * 30),
                                      ("one_line/project.zel", b"", b"CURRENT_SCENE " * 100)):
            said, _ = load(put(folder, name, begin, repeated, 20_000), 100 * MEGABYTE)
            check(said == "refused", f"{name}: '{said}'")
        said, _ = load(png(os.path.join(folder, "image.png"), 7000, 7000), 100 * MEGABYTE)
        check(said == "refused", f"image.png: '{said}'")
        # A Blueprint that cannot be read shows the two nodes of an empty one.
        for name, repeated in (("nodes.blueprint", b"NODE\t1\t\t1\t1\n" * 100), ("title.blueprint", b"NODE\t1\t" * 200)):
            said, _ = load(put(folder, name, b"", repeated, 20_000), 100 * MEGABYTE)
            check(said == "loaded 2", f"{name}: '{said}'")


def a_window_that_memory_does_not_suffice_for_shows_nothing():
    said, _ = load("", window=1000)
    check(said == "loaded 1000000", f"a window of a million pixels: '{said}'")
    said, _ = load("", 100 * MEGABYTE, window=8000)
    check(said == "refused", f"a window of 64 million pixels: '{said}'")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        an_image_beyond_64_million_pixels_is_refused_before_memory_is_taken_for_them,
        a_file_of_many_megabytes_loads_where_there_is_memory_for_it,
        a_file_that_memory_does_not_suffice_for_is_refused,
        a_window_that_memory_does_not_suffice_for_shows_nothing,
    ]) else 1)
