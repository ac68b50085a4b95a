#!/usr/bin/env python3
"""The sample projects: what lies in sample/ is what its scripts make."""

import glob
import os
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tests", "end_to_end"))

from program import check, run_tests  # noqa: E402  pylint: disable=wrong-import-position

SAMPLES = os.path.join(ROOT, "sample")


def files_below(folder):
    """The bytes of every file of the projects in the folder, by its path there."""
    files = {}
    for project in glob.glob(os.path.join(folder, "*", "project.zel")):
        for path, _, names in os.walk(os.path.dirname(project)):
            for name in names:
                with open(os.path.join(path, name), "rb") as file:
                    files[os.path.relpath(file.name, folder)] = file.read()
    return files


def the_scripts_make_the_sample_projects_byte_for_byte_and_no_other_file():
    kept = files_below(SAMPLES)
    check(len(kept) > 15, f"only {len(kept)} files were found")
    with tempfile.TemporaryDirectory() as folder:
        for script in sorted(glob.glob(os.path.join(SAMPLES, "make_*.py"))):
            subprocess.run([sys.executable, script, folder], check=True)
        made = files_below(folder)
    check(set(made) == set(kept), f"only made or only kept: {set(made) ^ set(kept)}")
    different = [path for path, content in made.items() if content != kept[path]]
    check(not different, f"the scripts make these otherwise: {different}")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        the_scripts_make_the_sample_projects_byte_for_byte_and_no_other_file,
    ]) else 1)
