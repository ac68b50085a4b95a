#!/usr/bin/env python3
"""The code of each vector width stays inside its object.

The linker keeps one copy of an inline function for the whole program. If the object of a wide vector offered one,
that copy could be the one that every other file calls, and a processor without such vectors would stop there. So an
object that comes from src/render/raster/kernels.cpp.in may offer nothing but its table of functions.

Arguments: the program nm, then the objects."""
import re
import subprocess
import sys

WIDTHS = {"one": "KernelsOneLane", "sse2": "KernelsSse2", "avx2": "KernelsAvx2", "avx512": "KernelsAvx512"}

# Data that every object may hold, without code: a pointer to the C++ library's handler of exceptions, and what the
# sanitizers keep, the types of called functions among it.
DATA = re.compile(r"^(DW\.ref\.__gxx_personality_\w+|__odr_asan.*|\.refptr\..*|\.weak\..*|typeinfo (name )?for .*)$")


def offered_by(nm, path):
    """The names of an object that the linker sees."""
    lines = subprocess.run([nm, "--defined-only", "--extern-only", "--demangle", path], check=True,
                           capture_output=True, text=True).stdout.splitlines()
    names = [line.split(maxsplit=2)[-1] for line in lines if len(line.split(maxsplit=2)) == 3]
    return [name for name in names if not DATA.match(name)]


def width_of(path):
    found = re.search(r"kernels_(\w+)\.cpp\.o(bj)?$", path)
    return found.group(1) if found else None


def main(nm, objects):
    failed = 0
    paths = {width_of(path): path for path in objects if width_of(path) in WIDTHS}
    for width, function in WIDTHS.items():
        offered = offered_by(nm, paths[width]) if width in paths else ["no object"]
        passed = offered == [f"{function}()"]
        print("PASS" if passed else "FAIL", f"kernels_{width}.cpp offers its table alone")
        if not passed:
            failed += 1
            print("  it offers:", ", ".join(offered))
    return failed


if __name__ == "__main__":
    sys.exit(1 if main(sys.argv[1], sys.argv[2:]) else 0)
