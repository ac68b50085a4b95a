#!/usr/bin/env python3
"""The executable as a file: what it needs, how it is protected, and that the same sources give the same bytes.

The second executable, built in another folder, is the argument.
"""

import os
import re
import subprocess
import sys

from program import STAGE, check, run_tests

EXECUTABLE = os.path.join(STAGE, "ZelEngine.exe")
# Loaded by the system before any program starts, so that no file beside the executable takes their place.
KNOWN_LIBRARIES = {"gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "shell32.dll", "user32.dll"}
PROTECTIONS = ("DYNAMIC_BASE", "HIGH_ENTROPY_VA", "NX_COMPAT")


SYMBOLS = STAGE + ".debug"


def tool(name, *arguments):
    """What one of the cross compiler's tools prints, errors included."""
    command = ["x86_64-w64-mingw32-" + name, *arguments]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=True).stdout


def headers():
    return tool("objdump", "--private-headers", EXECUTABLE)


def only_libraries_that_the_system_protects_are_linked():
    linked = {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers())}
    check(linked, "no library is linked at all")
    check(linked <= KNOWN_LIBRARIES, f"also linked: {sorted(linked - KNOWN_LIBRARIES)}")


def the_executable_is_a_protected_window_program_for_64_bits():
    text = headers()
    check("pei-x86-64" in text, "it is not for 64 bits")
    check("(Windows GUI)" in text, "it would open a console")
    missing = [name for name in PROTECTIONS if name not in text]
    check(not missing, f"missing: {missing}")


def the_executable_asks_for_windows_6_or_later():
    text = headers()
    for name in ("MajorOSystemVersion", "MajorSubsystemVersion"):
        version = re.search(rf"^{name}\s+(\d+)$", text, re.MULTILINE)
        check(version and int(version.group(1)) >= 6, f"{name}: {version and version.group(1)}")


def the_executable_is_smaller_than_two_million_bytes():
    check(os.path.getsize(EXECUTABLE) < 2_000_000, f"it has {os.path.getsize(EXECUTABLE)} bytes")


def the_executable_carries_icon_manifest_and_version():
    with open(EXECUTABLE, "rb") as file:
        content = file.read()
    check(b"requestedExecutionLevel level=\"asInvoker\"" in content, "no manifest")
    check("FileDescription".encode("utf-16-le") in content, "no version")
    check(b"\x89PNG" in content, "no icon of 256 pixels")


def sections(path):
    """Name, size and address of each section."""
    return re.findall(r"^ +\d+ (\S+) +([0-9a-f]+)  ([0-9a-f]+)", tool("objdump", "--section-headers", path), re.MULTILINE)


def the_executable_tells_no_names_and_no_lines_of_its_sources():
    check("no symbols" in tool("nm", EXECUTABLE), "it holds symbols")
    named = [name for name, _, _ in sections(EXECUTABLE) if "debug" in name or name.startswith("/")]
    check(not named, f"it holds the sections {named}")
    with open(EXECUTABLE, "rb") as file:
        check(b"main_loop.cpp" not in file.read(), "it names a source")


def the_symbol_file_beside_it_tells_the_name_and_the_line_of_an_address():
    placed = sections(EXECUTABLE)
    check(placed and placed == [row for row in sections(SYMBOLS) if "debug" not in row[0] and row[0][0] != "/"],
          "it is of another program")
    [address] = re.findall(r"^([0-9a-f]+) T _Z10RunProgramv$", tool("nm", SYMBOLS), re.MULTILINE)
    found = tool("addr2line", "--functions", "--demangle", "--exe", SYMBOLS, address)
    check(re.fullmatch(r"RunProgram\(\)\n\S*src/app/main_loop\.cpp:\d+\n", found), f"{address} is {found}")


def two_builds_in_different_folders_are_equal():
    with open(EXECUTABLE, "rb") as first, open(sys.argv[1], "rb") as second:
        check(first.read() == second.read(), f"{EXECUTABLE} and {sys.argv[1]} differ")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        only_libraries_that_the_system_protects_are_linked,
        the_executable_is_a_protected_window_program_for_64_bits,
        the_executable_asks_for_windows_6_or_later,
        the_executable_is_smaller_than_two_million_bytes,
        the_executable_carries_icon_manifest_and_version,
        the_executable_tells_no_names_and_no_lines_of_its_sources,
        the_symbol_file_beside_it_tells_the_name_and_the_line_of_an_address,
        two_builds_in_different_folders_are_equal,
    ]) else 1)
