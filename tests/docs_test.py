#!/usr/bin/env python3
"""The documents: every link and picture is there, and the user guide agrees with the program and with itself.

The same is asked of the workflow for a public service: what it names is there.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

import yaml

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tests", "end_to_end"))

from program import check, run_tests  # noqa: E402  pylint: disable=wrong-import-position

GUIDE = os.path.join(ROOT, "docs", "guide")
LANGUAGES = ("en", "cs")
WORKFLOW = os.path.join(ROOT, ".github", "workflows", "ci.yml")
START_AND_CLOSE = "tests/end_to_end/start_and_close.ps1"
LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")

# How the guide names the keys of the table in src/app/shortcuts.cpp, and which table lists those of a screen.
KEY_NAMES = {"kKeyEscape": "Esc", "kKeyTab": "Tab", "kKeyDelete": "Delete", "kKeyF1": "F1", "kKeyF2": "F2",
             "kKeyF3": "F3"}
SCREENS = {"InBlueprint": "Blueprint editor", "InPrefab": "Prefab editor", "Everywhere": "Scene editor"}
# These stand in the code beside that table.
MORE_KEYS = {"Blueprint editor": set(), "Prefab editor": set(),
             "Scene editor": {"1 to 9", "1 až 9", "Ctrl+Shift+S", "Esc"}}


def content(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def documents():
    names = ("README.md", "CONTRIBUTING.md", "CHANGELOG.md", os.path.join("sample", "README.md"))
    pages = [os.path.join(ROOT, name) for name in names]
    for folder, _, names in os.walk(os.path.join(ROOT, "docs")):
        pages += [os.path.join(folder, name) for name in names if name.endswith(".md")]
    return pages


def guide_pages(language):
    return {name: content(os.path.join(GUIDE, language, name)) for name in os.listdir(os.path.join(GUIDE, language))}


def without_code(text):
    return re.sub(r"```.*?```", "", text, flags=re.DOTALL)


def linked_from(page):
    """The files that a page names by relative links."""
    targets = (target.split("#")[0] for target in LINK.findall(without_code(content(page))))
    return [os.path.normpath(os.path.join(os.path.dirname(page), target)) for target in targets
            if target and "://" not in target]


def every_link_and_picture_exists():
    links = [(page, target) for page in documents() for target in linked_from(page)]
    check(len(links) > 100, f"only {len(links)} links were found")
    broken = [f"{os.path.relpath(page, ROOT)} -> {os.path.relpath(target, ROOT)}" for page, target in links
              if not os.path.exists(target)]
    check(not broken, f"broken: {broken}")


def both_languages_have_the_same_pages_with_the_same_pictures_and_sections():
    english, czech = (guide_pages(language) for language in LANGUAGES)
    check(len(english) > 10, f"only {len(english)} pages were found")
    check(set(english) == set(czech), f"only in one language: {set(english) ^ set(czech)}")
    for name, text in english.items():
        for shape in (r"!\[[^\]]*\]\(([^)]+)\)", r"^#+(?= )", r"^\d+\. ", r"^\|"):
            counts = [re.findall(shape, without_code(page), re.MULTILINE) for page in (text, czech[name])]
            check(counts[0] == counts[1], f"{name} differs in {shape}: {len(counts[0])} and {len(counts[1])}")


def the_first_game_names_the_same_things_step_by_step_in_both_languages():
    """The English page is played in the real window; this makes the other one tell the same game."""
    def named(language):
        steps = re.split(r"^(?:#+ |\d+\. |- )", guide_pages(language)["first-game.md"], flags=re.MULTILINE)
        return [sorted(re.findall(r'"([^"]+)"|`([^`]+)`', step)) for step in steps]

    english, czech = (named(language) for language in LANGUAGES)
    check(len(english) == len(czech) > 20, f"{len(english)} and {len(czech)} steps")
    for one, other in zip(english, czech):
        check(one == other, f"{one} in one language and {other} in the other")


def the_index_of_each_language_leads_to_every_page():
    for language in LANGUAGES:
        folder = os.path.join(GUIDE, language)
        linked = {os.path.basename(target) for target in linked_from(os.path.join(folder, "index.md"))
                  if os.path.dirname(target) == folder}
        missing = set(os.listdir(folder)) - linked - {"index.md"}
        check(not missing, f"{language}: not in the index: {missing}")


def every_picture_of_the_guide_is_shown():
    shown = {os.path.basename(target) for page in documents() for target in linked_from(page)}
    pictures = set(os.listdir(os.path.join(GUIDE, "images")))
    check(pictures and pictures <= shown, f"shown nowhere: {pictures - shown}")


def keys_in_code():
    """By screen, as the guide writes them."""
    keys = {screen: set() for screen in SCREENS.values()}
    table = content(os.path.join(ROOT, "src", "app", "shortcuts.cpp")).split("kShortcuts[] = {")[1].split("};")[0]
    rows = [line for line in table.splitlines() if line.strip()]
    for line in rows:
        row = re.fullmatch(r"\s*\{(\w+), *Modifier::(\w+), *('?)(\w+)'?, *\w+\},", line)
        check(row, f"a row that this test cannot read: {line}")
        condition, modifier, quote, key = row.groups()
        if key != "kAnyKey":
            keys[SCREENS[condition]].add(("Ctrl+" if modifier == "Ctrl" else "") + (key if quote else KEY_NAMES[key]))
    check(len(rows) > 20, f"only {len(rows)} rows were found")
    return keys


def keys_in_guide(language):
    """The first cells of the table below each heading."""
    keys = {}
    for section in re.split(r"^## ", guide_pages(language)["shortcuts.md"], flags=re.MULTILINE)[1:]:
        heading, _, text = section.partition("\n")
        cells = re.findall(r"^\| ([^|]+?) \|", text, re.MULTILINE)
        keys[heading] = set(cells[1:]) - {"---"}  # without the table's head
    return keys


def the_shortcut_tables_list_what_the_program_knows():
    for language in LANGUAGES:
        listed = keys_in_guide(language)
        for screen, keys in keys_in_code().items():
            check(keys <= listed[screen], f"{language}, {screen}: not listed: {keys - listed[screen]}")
            more = listed[screen] - keys - MORE_KEYS[screen]
            check(not more, f"{language}, {screen}: listed, but not in the program: {more}")


def the_labels_that_the_guide_quotes_stand_in_the_program():
    """Every text in double quotes, letter by letter."""
    program = ""
    for folder, _, names in os.walk(os.path.join(ROOT, "src")):
        program += "".join(content(os.path.join(folder, name)) for name in names if name.endswith((".cpp", ".h")))
    labels = re.findall(r'L"([^"\n]*)"', program)
    # The buttons of Windows, and texts that are put together.
    others = {"More info", "Run anyway", "Další informace", "Přesto spustit", "Custom Script 01", "Score: 0"}
    for language in LANGUAGES:
        for name, text in guide_pages(language).items():
            quoted = {re.sub(r"\s+", " ", quote) for quote in re.findall(r'"([^"]+)"', without_code(text))}
            unknown = {quote for quote in quoted - others if not any(quote in label for label in labels)}
            check(not unknown, f"{language}/{name} quotes what the program does not say: {unknown}")


def a_prefab_dropped_on_an_object_with_both_scripts_goes_where_the_guide_says():
    """The tests of the Inspector's drops hold the program to this order: CollectOnTouch takes it first."""
    for language in LANGUAGES:
        rows = re.findall(r"^\| (?:a )?prefab \| (.+) \|$", guide_pages(language)["inspector.md"], re.MULTILINE)
        check(len(rows) == 1, f"{language}: {len(rows)} rows about a dropped prefab")
        places = [rows[0].find(script) for script in ("CollectOnTouch", "PlanePrefabSpawner")]
        check(0 <= places[0] < places[1], f"{language}: the row says {rows[0]!r}")


def the_presets_that_documents_and_workflow_name_exist():
    presets = json.loads(content(os.path.join(ROOT, "CMakePresets.json")))
    kinds = {"configurePresets": r"cmake --preset ([\w-]+)", "buildPresets": r"cmake --build --preset ([\w-]+)",
             "testPresets": r"ctest --preset ([\w-]+)"}
    used = set()
    for page in documents() + [WORKFLOW]:
        for kind, command in kinds.items():
            names = set(re.findall(command, content(page)))
            unknown = names - {preset["name"] for preset in presets[kind]}
            check(not unknown, f"{os.path.relpath(page, ROOT)} names unknown {kind}: {unknown}")
            used |= {(kind, name) for name in names}
    for kind in kinds:
        check((kind, "windows-msvc") in used, f"no use of {kind} was found")


def steps_of_the_workflow():
    """Of every job, and for what it runs each."""
    workflow = yaml.safe_load(content(WORKFLOW))
    for name, job in workflow["jobs"].items():
        check(job["runs-on"] and job["timeout-minutes"], f"{name}: no machine or no end")
        for step in job["steps"]:
            check(("run" in step) != ("uses" in step), f"{name}: {step} does nothing, or two things")
            yield name, step


def every_step_of_the_workflow_runs_what_is_in_these_sources():
    steps = list(steps_of_the_workflow())
    check({name for name, _ in steps} == {"test", "clang", "msvc", "mingw"}, "other jobs")
    settings = content(os.path.join(ROOT, "CMakeLists.txt"))
    options = set(re.findall(r"^(?:option|set)\((ZEL_\w+)", settings, re.MULTILINE))
    scripts = set()
    for name, step in steps:
        if "uses" in step:
            check(re.fullmatch(r"[\w-]+/[\w-]+@v\d+", step["uses"]), f"{name}: {step['uses']} has no version")
            continue
        unknown = set(re.findall(r"-D(ZEL_\w+)=", step["run"])) - options
        check(not unknown, f"{name}: unknown options {unknown}")
        scripts |= set(re.findall(r"(?<![\w/])\./([\w/.-]+)", step["run"]))
    check({"test", "package", "lint", START_AND_CLOSE} <= scripts, f"the workflow runs {scripts}")
    missing = [script for script in scripts - {START_AND_CLOSE}
               if not os.access(os.path.join(ROOT, script), os.X_OK)]
    check(not missing and os.path.exists(os.path.join(ROOT, START_AND_CLOSE)), f"not to be run: {missing}")


def on_windows_itself_the_workflow_runs_the_platform_tests_and_starts_the_program():
    jobs = {"msvc": "windows-msvc", "mingw": "windows-mingw"}
    for name, preset in jobs.items():
        runs = [step["run"] for job, step in steps_of_the_workflow() if job == name and "run" in step]
        check(any(f"cmake --preset {preset} -DZEL_TESTS=ON" in run for run in runs), f"{name} builds no tests")
        check(any(f"ctest --preset {preset}" in run for run in runs), f"{name} runs no tests")
        started = f"./{START_AND_CLOSE} build/stage/ZelEngine/ZelEngine.exe"
        check(started in runs, f"{name} does not start the program")
    tests = content(os.path.join(ROOT, "tests", "CMakeLists.txt"))
    check(re.search(r"if\(CMAKE_HOST_WIN32\)[^)]*\n\s+add_test\(NAME platform COMMAND zel_platform_tests\)", tests),
          "ctest on Windows does not know the platform tests")
    script = content(os.path.join(ROOT, START_AND_CLOSE))
    check("exit $process.ExitCode" in script, "the script does not give the program's exit code")


def folder_of(file):
    """The folder of src/ that a file belongs to, as the architecture page lists them."""
    folder = os.path.dirname(file)
    return folder if folder == "render/raster" else folder.split("/")[0]


def every_include_leads_downward_in_the_list_of_folders():
    order = re.findall(r"^\| `src/([\w/]+)/` \|", content(os.path.join(ROOT, "docs", "architecture.md")), re.MULTILINE)
    sources = os.path.join(ROOT, "src")
    upward, count, seen = [], 0, set()
    for folder, _, names in os.walk(sources):
        for name in names:
            if not name.endswith((".h", ".cpp", ".cpp.in")):
                continue
            file = os.path.relpath(os.path.join(folder, name), sources)
            seen.add(folder_of(file))
            for included in re.findall(r'^#include "([^"]+/[^"]+)"', content(os.path.join(folder, name)), re.MULTILINE):
                if included.startswith("stb/"):  # a decoder that the tests' platform uses
                    continue
                count += 1
                if order.index(folder_of(included)) < order.index(folder_of(file)):
                    upward.append(f"{file} includes {included}")
    check(seen == set(order), f"folders and the list differ: {seen ^ set(order)}")
    check(count > 800, f"only {count} includes were found")
    check(not upward, f"{len(upward)} lead upward: {upward[:10]}")


def example_in(language):
    return guide_pages(language)["file-formats.md"].split("```python\n")[1].split("```")[0]


def the_example_script_writes_a_scene_of_whole_object_lines():
    check(example_in("en") == example_in("cs"), "the languages show different scripts")
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, "-c", example_in("en")], cwd=folder, check=True)
        with open(os.path.join(folder, "Stairs.scene"), "rb") as file:
            scene = file.read()
    lines = scene.decode("utf-8-sig").split("\r\n")
    check(scene.startswith(b"\xef\xbb\xbf") and lines[-1] == "", "it is not written as the program writes")
    check(lines[0] == "ZELENGINE_SCENE\t1", f"the header is {lines[0]!r}")
    columns = {len(line.split("\t")) for line in lines[1:-1]}
    check(len(lines) == 21 and columns == {61}, f"{len(lines) - 2} objects with {columns} columns")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        every_link_and_picture_exists,
        both_languages_have_the_same_pages_with_the_same_pictures_and_sections,
        the_first_game_names_the_same_things_step_by_step_in_both_languages,
        the_index_of_each_language_leads_to_every_page,
        every_picture_of_the_guide_is_shown,
        the_shortcut_tables_list_what_the_program_knows,
        the_labels_that_the_guide_quotes_stand_in_the_program,
        the_example_script_writes_a_scene_of_whole_object_lines,
        a_prefab_dropped_on_an_object_with_both_scripts_goes_where_the_guide_says,
        the_presets_that_documents_and_workflow_name_exist,
        every_include_leads_downward_in_the_list_of_folders,
        every_step_of_the_workflow_runs_what_is_in_these_sources,
        on_windows_itself_the_workflow_runs_the_platform_tests_and_starts_the_program,
    ]) else 1)
