#!/usr/bin/env python3
"""Plants mistakes in the sources, one at a time, and says which of them no unit test notices.

Each mistake is made in a copy of one source, which alone is compiled and linked with the other objects. The tests named
after the source run first, then those of its folder, then the others, until one fails. The same seed plants the same
mistakes in the same sources. What is built, and the report, lie in build/mutants. The report is written as the run
goes, so that a run that was stopped can go on: what it says was noticed is not tried again, and what survived is.

A mistake counts as noticed by a failed test, by a crash, by a test program that takes five times as long as usual, and
by a static_assert. One whose object is byte for byte that of the true source has no effect and is not counted, and one
that does not compile is replaced by the next.
"""

import argparse
import collections
import concurrent.futures
import dataclasses
import json
import os
import queue
import random
import re
import resource
import shutil
import subprocess
import sys
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build", "mutants")
TESTS = os.path.join(BUILD, "tests", "zel_tests")
# Without sanitizers, which would take ten times as long; the library's own checks find a wrong index too.
OPTIONS = ["-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -D_GLIBCXX_ASSERTIONS",
           "-DZEL_PLATFORM=headless", "-DZEL_SOURCES_PER_BATCH=6", "-DZEL_WARNINGS_AS_ERRORS=OFF"]
MEMORY = 4 << 30  # bytes that a test program may take
NOT_MUTATED = ("src/platform/", "src/app/main.cpp")  # the answers of the test's own platform, and what no test runs


@dataclasses.dataclass(frozen=True)
class Mistake:
    path: str  # of the source, below the root
    start: int  # what is replaced, in characters
    end: int
    replacement: str
    kind: str


# ---- Finding places for mistakes --------------------------------------------------------------------------------

def without(text, *patterns):
    """The text with all that the patterns match blanked out, every character in its place."""
    for pattern in patterns:
        text = re.sub(pattern, lambda match: re.sub(r"[^\n]", " ", match.group(0)), text)
    return text


LITERAL = r"\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])+'"


def uncommented(text):
    comments = re.compile(rf"({LITERAL})|//[^\n]*|/\*.*?\*/", re.DOTALL)
    return comments.sub(lambda match: match.group(1) or re.sub(r"[^\n]", " ", match.group(0)), text)


def code_of(text):
    """Only code: no comments, no texts, no lines of the preprocessor, nothing that the compiler alone evaluates."""
    return without(uncommented(text), LITERAL, r"(?m)^\s*#[^\n]*", r"static_assert\(.*?\);", r"(?m)^\s*assert\(.*?\);",
                   r"\[\[[^\]]*\]\]")


def numbers(code):
    for match in re.finditer(r"(?<![\w.])(\d[\w.']*)", code):
        text = match.group(1)
        whole = re.fullmatch(r"(0x[0-9A-Fa-f']+|\d[\d']*)(u|U|ull|ll)?", text)
        broken = re.fullmatch(r"(\d+\.\d*)(f?)", text)
        if whole:
            value, suffix = int(whole.group(1).replace("'", ""), 0), whole.group(2) or ""
            form = "0x{:X}" if text.startswith("0x") else "{}"
            for other in {value + 1, max(value - 1, 0)} - {value}:
                yield *match.span(1), form.format(other) + suffix, "constant"
        elif broken:
            value = float(broken.group(1))
            for other in (value * 1.05 if value else 0.5, value * 0.95 if value else -0.5):
                digits = f"{other:.7f}".rstrip("0")
                yield *match.span(1), digits + ("0" if digits[-1] == "." else "") + broken.group(2), "constant"


def texts(text):
    """One letter of a wide text."""
    text = without(uncommented(text), r"static_assert\(.*?\);")
    for match in re.finditer(r'L"((?:\\.|[^"\\\n])+)"', text):
        letters = [i for i in range(*match.span(1)) if text[i].isalnum() and text[i - 1] != "\\"]
        if letters:
            i = letters[len(letters) // 2]
            yield i, i + 1, chr(ord(text[i]) ^ 1) if (chr(ord(text[i]) ^ 1)).isalnum() else "x", "text"


def replaced(code, kind, pairs):
    for old, others in pairs.items():
        for match in re.finditer(re.escape(old), code):
            for other in others:
                yield *match.span(), other, kind


def operators(code):
    yield from replaced(code, "comparison", {
        " < ": (" <= ", " > "), " > ": (" >= ", " < "), " <= ": (" < ", " >= "), " >= ": (" > ", " <= "),
        " == ": (" != ",), " != ": (" == ",), "std::min(": ("std::max(",), "std::max(": ("std::min(",)})
    yield from replaced(code, "sign", {
        " + ": (" - ",), " - ": (" + ",), " += ": (" -= ",), " -= ": (" += ",), " * ": (" / ",), " / ": (" * ",),
        "++": ("--",), "--": ("++",)})
    for match in re.finditer(r"(?<=[(,=?:{] )-(?=[\w(])|(?<=[({])-(?=[\w(])|(?<=return )-(?=[\w(])", code):
        yield *match.span(), "", "sign"


def closing(code, opening):
    """Where the bracket at `opening` is closed."""
    depth = 0
    for i in range(opening, len(code)):
        depth += (code[i] in "([{") - (code[i] in ")]}")
        if depth == 0:
            return i
    return -1


def conditions(code):
    yield from replaced(code, "condition", {" && ": (" || ",), " || ": (" && ",)})
    for match in re.finditer(r"(?<![\w!])!(?=[\w(])", code):
        yield *match.span(), "", "condition"
    for match in re.finditer(r"\bif \(", code):
        end = closing(code, match.end() - 1)
        if end > 0 and ";" not in code[match.end():end]:
            for other in ("true", "false"):
                yield match.end(), end, other, "condition"


def statements(code):
    """Whole statements of one line that neither declare nor return a value."""
    for match in re.finditer(r"(?m)^( +|.*\) )([^\s][^\n;{}]*;)[ ]*$", code):
        statement = match.group(2)
        if (code[:match.start()].rstrip() or "{")[-1] not in ";{}:":
            continue  # the rest of one that began above
        if re.fullmatch(r"(return|break|continue);|\w[\w:.\->\[\]()*]*(\(.*\)|\+\+|--);|[\w*][\w:.\->\[\]()]*"
                        r" [-+*/|&^]?= .*;|\+\+.*;|--.*;", statement):
            if not re.match(r"(return|using|const|auto|static|constexpr|case|for|if|while) ", statement):
                yield *match.span(2), ";", "statement"


def arguments(code):
    """Two neighbours within the parentheses of a call, or within the braces of a value."""
    for match in re.finditer(r"\w[({]", code):
        opening = match.end() - 1
        end = closing(code, opening)
        if end < 0 or "\n" in code[opening:end] or code[end + 1:end + 3] == " {":
            continue
        if re.search(r"std::(min|max)(<\w+>)?$", code[max(0, opening - 24):opening]):
            continue  # the same either way
        cuts, depth = [opening], 0
        for i in range(opening + 1, end):
            depth += (code[i] in "([{") - (code[i] in ")]}")
            if code[i] == "," and depth == 0:
                cuts.append(i)
        cuts.append(end)
        parts = [(a + 1 + (code[a + 1:b][:1] == " "), b) for a, b in zip(cuts, cuts[1:])]
        for (a, b), (c, d) in zip(parts, parts[1:]):
            if code[a:b] != code[c:d] and re.search(r"\S", code[a:b]) and re.search(r"\S", code[c:d]):
                yield a, d, (a, b, c, d), "arguments"


def rows(code):
    """A row of a table, in a line of its own."""
    for match in re.finditer(r"(?m)^ +(\{[^\n]*\},)[ ]*$", code):
        yield *match.span(1), "", "row"


def mistakes_in(path):
    """All that can be planted in a source."""
    with open(os.path.join(ROOT, path), encoding="utf-8", newline="") as file:
        text = file.read()
    code = code_of(text)
    for make in (numbers, operators, conditions, statements, arguments, rows):
        for start, end, replacement, kind in make(code):
            if isinstance(replacement, tuple):
                a, b, c, d = replacement
                replacement = text[c:d] + text[b:c] + text[a:b]
            yield Mistake(path, start, end, replacement, kind)
    for start, end, replacement, kind in texts(text):
        yield Mistake(path, start, end, replacement, kind)


def sources(pattern):
    found = []
    for folder, _, names in os.walk(os.path.join(ROOT, "src")):
        found += [os.path.relpath(os.path.join(folder, name), ROOT) for name in names if name.endswith(".cpp")]
    return sorted(path for path in found if not path.startswith(NOT_MUTATED) and re.search(pattern, path))


def chosen(pattern, kinds, seed):
    """All mistakes in an order that depends on the seed alone: every kind in turn, within it by chance."""
    by_kind = collections.defaultdict(list)
    for path in sources(pattern):
        for mistake in mistakes_in(path):
            if re.search(kinds, mistake.kind):
                by_kind[mistake.kind].append(mistake)
    chance = random.Random(seed)
    for kind in sorted(by_kind):
        chance.shuffle(by_kind[kind])
    while any(by_kind.values()):
        for kind in sorted(by_kind):
            if by_kind[kind]:
                yield by_kind[kind].pop()


# ---- Trying one -------------------------------------------------------------------------------------------------

@dataclasses.dataclass
class Program:
    """How the unit tests are compiled and linked, and how long they take."""
    compile_commands: dict
    link_command: str
    seconds: float = 0


def built():
    """The true program, whose tests pass."""
    log = os.path.join(ROOT, "build", "mutants.log")
    os.makedirs(os.path.dirname(log), exist_ok=True)
    with open(log, "wb") as file:
        for command in (["cmake", "-G", "Ninja", "-S", ROOT, "-B", BUILD, *OPTIONS],
                        ["cmake", "--build", BUILD, "--target", "zel_tests"]):
            if subprocess.run(command, stdout=file, stderr=file, check=False).returncode != 0:
                sys.exit(f"The sources do not build as they are: see {log}")
    with open(os.path.join(BUILD, "compile_commands.json"), encoding="utf-8") as file:
        commands = {os.path.relpath(entry["file"], ROOT): entry["command"] for entry in json.load(file)}
    links = subprocess.run(["ninja", "-C", BUILD, "-t", "commands", "zel_tests"], capture_output=True, text=True,
                           check=True).stdout.splitlines()
    program = Program(commands, links[-1])
    start = time.monotonic()
    if subprocess.run([TESTS], cwd=BUILD, stdout=subprocess.DEVNULL, check=False).returncode != 0:
        sys.exit("The unit tests fail without any mistake.")
    program.seconds = time.monotonic() - start
    return program


def changed(mistake):
    """The source's text, and the lines with the mistake, before and after."""
    with open(os.path.join(ROOT, mistake.path), encoding="utf-8", newline="") as file:
        text = file.read()
    new = text[:mistake.start] + mistake.replacement + text[mistake.end:]
    first = text.rfind("\n", 0, mistake.start) + 1
    last = text.find("\n", mistake.end)
    before, after = text[first:last].strip(), new[first:last + len(new) - len(text)].strip()
    return new, text.count("\n", 0, mistake.start) + 1, before, after


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def nearest_first(path):
    """Options for the tests named after a source, for those of its folder, and for all others."""
    own_folder = path.split("/")[1]
    name = os.path.splitext(os.path.basename(path))[0]
    # A batch of tests names them by "tests/./", a single one by "tests/".
    by_name, by_folder = (f"*/tests/{place},*/tests/./{place}" for place in
                          (f"{own_folder}/*{name}_test.cpp", f"{own_folder}/*"))
    return ([f"--source-file={by_name}"], [f"--source-file={by_folder}", f"--source-file-exclude={by_name}"],
            [f"--source-file-exclude={by_folder}"])


def first_failure(executable, folder, path, seconds):
    """What notices the mistake, or an empty text."""
    for choice in nearest_first(path):
        temporary = os.path.join(folder, "tmp")
        shutil.rmtree(temporary, ignore_errors=True)
        os.makedirs(temporary)
        try:
            done = subprocess.run([executable, "--abort-after=1", *choice], cwd=folder, capture_output=True, check=False,
                                  timeout=5 * seconds + 10, preexec_fn=limit_memory,
                                  env=dict(os.environ, TMPDIR=temporary))
        except subprocess.TimeoutExpired:
            return "takes too long"
        if done.returncode != 0:
            said = done.stdout.decode("utf-8", "replace")
            names = re.findall(r"^TEST CASE:\s+(.*)$", said, re.MULTILINE)
            return (names[-1] if names else f"exit code {done.returncode}") + (" (crash)" if "CRASHED" in said else "")
    return ""


def try_out(mistake, program, folder):
    """One of "survived", "noticed", "no effect" and "does not compile", and what noticed it."""
    new, _, _, _ = changed(mistake)
    name = os.path.basename(mistake.path)
    copy, object_file, executable = (os.path.join(folder, file) for file in (name, name + ".o", "zel_tests"))
    with open(copy, "w", encoding="utf-8", newline="") as file:
        file.write(f'#line 1 "{os.path.join(ROOT, mistake.path)}"\n{new}')  # so that asserts name the true source

    command = program.compile_commands[mistake.path]
    true_object = re.search(r" -o (\S+)", command).group(1)
    command = command.replace(f" -o {true_object} ", f" -o {object_file} ")
    command = command.replace(f" -c {os.path.join(ROOT, mistake.path)}", f" -c {copy}")
    done = subprocess.run(["sh", "-c", command], cwd=BUILD, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        by_assert = "static assertion failed" in done.stderr or "static_assert failed" in done.stderr
        return ("noticed", "the compiler: a static_assert") if by_assert else ("does not compile", "")
    with open(object_file, "rb") as one, open(os.path.join(BUILD, true_object), "rb") as other:
        if one.read() == other.read():
            return "no effect", ""

    link = program.link_command.replace(f" {true_object} ", f" {object_file} ")
    link = link.replace(" -o tests/zel_tests ", f" -o {executable} ")
    if subprocess.run(["sh", "-c", link], cwd=BUILD, capture_output=True, check=False).returncode != 0:
        return "does not compile", ""
    noticed_by = first_failure(executable, folder, mistake.path, program.seconds)
    return ("noticed", noticed_by) if noticed_by else ("survived", "")


# ---- All of them ------------------------------------------------------------------------------------------------

def place_and_change(mistake):
    """Which mistake it is, as the report says it."""
    _, line, before, after = changed(mistake)
    return f"{mistake.path}:{line}: {mistake.kind}", f"    - {before}\n    + {after}\n" if before != after else ""


def describe(mistake, result, noticed_by):
    place, change = place_and_change(mistake)
    by = f" by: {noticed_by}" if noticed_by else ""
    return f"{result} {place}{by}\n{change}"


def known_from(report):
    """What a report tells of mistakes that need not be tried again, by place and change."""
    if not os.path.exists(report):
        return {}
    with open(report, encoding="utf-8") as file:
        text = file.read()
    entries = re.findall(r"^(noticed|no effect|does not compile) (\S+:\d+: \w+)(?: by: (.*))?\n((?:    [-+] .*\n)*)",
                         text, re.MULTILINE)
    return {(place, change): (result, noticed_by) for result, place, noticed_by, change in entries}


def run(candidates, wanted, jobs, known, program, report):
    """Tries candidates that are not known until as many as wanted had an effect. Their results by mistake."""
    results = {}
    candidates = iter(candidates)
    lock = threading.Lock()
    folders = queue.SimpleQueue()
    for job in range(jobs):
        folders.put(os.path.join(BUILD, f"job{job}"))

    def work():
        folder = folders.get()
        os.makedirs(folder, exist_ok=True)
        while True:
            with lock:
                tried = [result for result, _ in results.values() if result in ("", "noticed", "survived")]
                mistake = next(candidates, None) if len(tried) < wanted else None
                if mistake is None:
                    return
                results[mistake] = ("", "")  # under way
            result = known.get(place_and_change(mistake)) or try_out(mistake, program, folder)
            with lock:
                results[mistake] = result
                report.write(describe(mistake, *result))
                report.flush()
                if result[0] == "survived":
                    print(describe(mistake, *result), flush=True)

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for worker in [pool.submit(work) for _ in range(jobs)]:
            worker.result()
    return results


def table(results, name_of):
    """A line for each group of mistakes: how many of those with an effect were noticed."""
    counts = collections.defaultdict(collections.Counter)
    for mistake, (result, _) in results.items():
        counts[name_of(mistake)][result] += 1
        counts["all"][result] += 1
    lines = []
    for name in sorted(counts, key=lambda name: (name == "all", name)):
        noticed, survived = counts[name]["noticed"], counts[name]["survived"]
        if noticed + survived:
            lines.append(f"{name:16} {noticed:4} of {noticed + survived:4} noticed, "
                         f"{100 * noticed / (noticed + survived):5.1f} %")
    return "\n".join(lines)


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--count", type=int, default=300, help="how many mistakes with an effect (300)")
    options.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many at a time")
    options.add_argument("--only", default="", help="a regular expression that the paths of the sources match")
    options.add_argument("--kind", default="", help="likewise for the kinds of mistakes")
    options.add_argument("--resume", action="store_true", help="go on with a run that was stopped, by its report")
    options.add_argument("--list", action="store_true", help="show the mistakes, and plant none")
    choice = options.parse_args()

    candidates = chosen(choice.only, choice.kind, choice.seed)
    if choice.list:
        for mistake, _ in zip(candidates, range(choice.count)):
            print(describe(mistake, "would plant", ""))
        return
    start = time.monotonic()
    program = built()
    print(f"The tests take {program.seconds:.0f} s. Survivors:", flush=True)
    report = os.path.join(BUILD, f"report_{choice.seed}.txt")
    known = known_from(report) if choice.resume else {}
    with open(report, "w", encoding="utf-8") as file:
        results = run(candidates, choice.count, choice.jobs, known, program, file)
        sums = collections.Counter(result for result, _ in results.values())
        text = (f"{table(results, lambda mistake: mistake.kind)}\n\n"
                f"{table(results, lambda mistake: mistake.path.split('/')[1])}\n\n"
                f"{sums['no effect']} without effect and {sums['does not compile']} that do not compile came on top. "
                f"{(time.monotonic() - start) / 60:.0f} minutes.\n")
        file.write(text)
    print(text + f"Every mistake, and the test that noticed it: {os.path.relpath(report)}")


if __name__ == "__main__":
    main()
