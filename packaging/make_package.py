#!/usr/bin/env python3
"""Packs the staged program for its users: the zip, its parts list (SPDX), a winget manifest and the sums of all. The
symbol file, which tells names and lines for the addresses of a crash report, lies beside the zip and not in it.

The same sources and the same program give the same bytes: entries are sorted, and their time is SOURCE_DATE_EPOCH,
or that of the last commit, or in sources without a history that of the newest file.
"""

import argparse
import hashlib
import os
import re
import subprocess
import sys
import time
import zipfile

import spdx
import winget

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
STAGE = os.path.join(ROOT, "build", "stage", "ZelEngine")
EXECUTABLE = "ZelEngine.exe"
# Where the zip will lie for everyone is not known yet; nothing answers under this name.
NO_HOST = "https://example.invalid/ZelEngine"
# The terms of what the cross compiler puts of its runtime libraries into the executable, as its packages bring them.
NOTICES = {"licenses/gcc.txt": "/usr/share/doc/gcc-mingw-w64-base/copyright",
           "licenses/mingw-w64.txt": "/usr/share/doc/mingw-w64-x86-64-dev/copyright"}
SOURCE_FOLDERS = ("assets", "cmake", "docs", "packaging", "sample", "src")  # what a package is made of
LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")
FIRST_ZIP_SECOND, LAST_ZIP_SECOND = 315532800, 4354819199  # from 1980 to 2107, in seconds since 1970


class Refusal(Exception):
    """Why there is no package."""


def content(*parts):
    with open(os.path.join(*parts), "rb") as file:
        return file.read()


def files_below(folder):
    """Relative to the folder, with slashes, without those whose name begins with a point."""
    found = []
    for parent, folders, names in os.walk(folder):
        folders[:] = [name for name in folders if not name.startswith(".")]
        found += [os.path.join(parent, name) for name in names if not name.startswith(".")]
    return [os.path.relpath(path, folder).replace(os.sep, "/") for path in found]


def version():
    """From where it stands alone."""
    return re.search(r"^project\(ZelEngine VERSION (\d+\.\d+\.\d+) ", content(ROOT, "CMakeLists.txt").decode(),
                     re.MULTILINE).group(1)


def version_of(executable):
    """That which Windows shows in its properties, empty when there is none."""
    found = re.search(re.escape("ProductVersion".encode("utf-16-le")) + rb"(?:\0\0)+((?:[0-9.]\0)+)\0\0", executable)
    return found.group(1).decode("utf-16-le") if found else ""


def staged_program(stage):
    path = os.path.join(stage, EXECUTABLE)
    if not os.path.isfile(path):
        raise Refusal(f"no program has been built: {path} is missing. ./package builds it, and so does ./run.")
    executable = content(path)
    if version_of(executable) != version():
        raise Refusal(f"{path} is of version {version_of(executable) or 'unknown'} and not {version()}: build it anew.")
    return executable


def staged_symbols(stage):
    path = os.path.normpath(stage) + ".debug"
    if not os.path.isfile(path):
        raise Refusal(f"the symbols of the program are missing: {path}. Build it anew, or say --without-symbols.")
    return content(path)


def seconds_of_the_last_commit():
    """As text, empty when these sources have no history, or none that can be read."""
    if not os.path.exists(os.path.join(ROOT, ".git")):
        return ""  # and a repository around an unpacked archive is another's
    try:
        log = subprocess.run(["git", "-C", ROOT, "log", "-1", "--format=%ct"], stdout=subprocess.PIPE,
                             stderr=subprocess.DEVNULL, check=False)
    except FileNotFoundError:
        return ""
    return log.stdout.decode().strip()


def seconds_of_the_newest_source():
    """As text. An archive of a commit gives every file the commit's time."""
    folders = [os.path.join(ROOT, name) for name in SOURCE_FOLDERS]
    paths = [os.path.join(folder, name) for folder in folders for name in files_below(folder)]
    paths += [os.path.join(ROOT, name) for name in os.listdir(ROOT)]
    return str(max(int(os.path.getmtime(path)) for path in paths
                   if os.path.isfile(path) and "__pycache__" not in path))


def seconds_of_the_sources():
    """Since 1970: when what is packed was made, as far as a zip can say."""
    text = (os.environ.get("SOURCE_DATE_EPOCH") or seconds_of_the_last_commit() or seconds_of_the_newest_source())
    if not re.fullmatch(r"\d+", text):
        raise Refusal(f"{text} is no date: set SOURCE_DATE_EPOCH to seconds since 1970, or to nothing.")
    return min(max(int(text), FIRST_ZIP_SECOND), LAST_ZIP_SECOND)


def notices():
    missing = [path for path in NOTICES.values() if not os.path.isfile(path)]
    if missing:
        raise Refusal(f"the terms of the compiler's runtime are missing: {', '.join(missing)}")
    return {name: content(path) for name, path in NOTICES.items()}


def sample_projects():
    samples = os.path.join(ROOT, "sample")
    return sorted(name for name in os.listdir(samples) if os.path.isfile(os.path.join(samples, name, "project.zel")))


def linked_from(page):
    """What a page of the documents links to in this package, as paths from the top."""
    text = re.sub(r"```.*?```", "", content(ROOT, page).decode(), flags=re.DOTALL)
    targets = [target.split("#")[0] for target in LINK.findall(text) if "://" not in target]
    return [os.path.normpath(os.path.join(os.path.dirname(page), target)).replace(os.sep, "/") for target in targets
            if target]


def documents():
    """The user guide, and whatever its pages lead to."""
    found = {"CHANGELOG.md"} | {"docs/guide/" + name for name in files_below(os.path.join(ROOT, "docs", "guide"))}
    waiting = sorted(found)
    while waiting:
        page = waiting.pop()
        for target in linked_from(page) if page.endswith(".md") else []:
            if not target.startswith("docs/") or not os.path.isfile(os.path.join(ROOT, target)):
                raise Refusal(f"{page} links to {target}, which is no document to be packed.")
            if target not in found:
                found.add(target)
                waiting.append(target)
    return sorted(found)


def packed_files(stage):
    """Paths in the package's folder, and what is in them."""
    files = {EXECUTABLE: staged_program(stage), "README.txt": content(ROOT, "packaging", "README.txt"),
             "LICENSE": content(ROOT, "LICENSE")} | notices()
    assets = os.path.join(ROOT, "assets")
    files |= {"assets/" + name: content(assets, name) for name in os.listdir(assets) if name.endswith(".png")}
    files |= {page: content(ROOT, page) for page in documents()}
    for project in sample_projects():
        if any(name.split("/")[0] == project for name in files):
            raise Refusal(f"the sample project {project} has the name of something else in the package.")
        folder = os.path.join(ROOT, "sample", project)
        files |= {f"{project}/{name}": content(folder, name) for name in files_below(folder)}
    return files


def write_zip(path, files, seconds):
    with zipfile.ZipFile(path, "w") as archive:
        for name in sorted(files):
            entry = zipfile.ZipInfo(name, time.gmtime(seconds)[:6])
            entry.create_system = 3  # Unix, on every machine: so the modes count where they matter
            entry.external_attr = (0o100755 if name.endswith(".exe") else 0o100644) << 16
            archive.writestr(entry, files[name], zipfile.ZIP_DEFLATED, 9)


def write(folder, name, text):
    path = os.path.join(folder, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", newline="\n") as file:
        file.write(text)
    return name


def make_package(stage, out, url, with_symbols):
    """The names of what it wrote, relative to `out`."""
    top = f"ZelEngine-{version()}"
    archive = f"{top}-win64.zip"
    seconds = seconds_of_the_sources()
    files = {f"{top}/{name}": data for name, data in packed_files(stage).items()}
    symbols = {f"{top}-win64.debug": staged_symbols(stage)} if with_symbols else {}
    copyright_line = re.search(r"^Copyright .*$", content(ROOT, "LICENSE").decode(), re.MULTILINE).group(0)

    os.makedirs(out, exist_ok=True)
    write_zip(os.path.join(out, archive), files, seconds)
    data = content(out, archive)
    release = {"version": version(), "archive": archive, "url": f"{url.rstrip('/')}/{archive}", "seconds": seconds,
               "sha1": hashlib.sha1(data).hexdigest(), "sha256": hashlib.sha256(data).hexdigest(),
               "copyright": copyright_line}

    written = [archive, write(out, f"{top}-win64.spdx.json", spdx.document(release, files))]
    for name, data in symbols.items():
        with open(os.path.join(out, name), "wb") as file:
            file.write(data)
        written.append(name)
    for name, text in winget.manifests(release, f"{top}\\{EXECUTABLE}").items():
        written.append(write(out, f"winget/{name}", text))
    sums = "".join(f"{hashlib.sha256(content(out, name)).hexdigest()}  {name}\n" for name in sorted(written))
    return written + [write(out, "SHA256SUMS", sums)]


def main():
    options = argparse.ArgumentParser(description="Packs the program that ./run or ./package built.")
    options.add_argument("--stage", default=STAGE, help="the folder with the built program")
    options.add_argument("--out", default=os.path.join(ROOT, "dist"), help="where the package is put")
    options.add_argument("--url", default=os.environ.get("ZEL_DOWNLOAD_URL") or NO_HOST,
                         help="the folder from which users will download the zip; ZEL_DOWNLOAD_URL says the same")
    options.add_argument("--without-symbols", action="store_true", help="for a program that was built without any")
    choice = options.parse_args()
    try:
        for name in make_package(choice.stage, choice.out, choice.url, not choice.without_symbols):
            print(os.path.join(os.path.relpath(choice.out), name))
    except Refusal as refusal:
        sys.exit(f"No package: {refusal}")
    if choice.url == NO_HOST:
        print(f"The winget manifest and the SPDX document name {NO_HOST}, where nothing is. Set ZEL_DOWNLOAD_URL.")


if __name__ == "__main__":
    main()
