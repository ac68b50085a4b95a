#!/usr/bin/env python3
"""The package for users: what is in it, that its papers agree with it, and that it runs where a user unpacks it.

Sums are taken by the system's own commands, and the papers are read by parsers that the packing does not use.
"""

import contextlib
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

import yaml

from program import HUB_TITLE, ROOT, STAGE, check, run_tests, running, wait_for

SECONDS = 1790000000  # the time of the packages made here
BASE = "https://downloads.invalid/zel"
# Folders of users: a blank, Czech letters, and a parenthesis as browsers add it.
USER_FOLDER = "Příliš žluťoučký kůň (1)"
# In the editor's window at its first size: the viewport below its tools.
VIEWPORT = (230, 100, 1040, 680)


def content(*parts):
    with open(os.path.join(*parts), "rb") as file:
        return file.read()


def output(*command, cwd=ROOT):
    return subprocess.run(command, cwd=cwd, capture_output=True, text=True, check=True).stdout


def first_words(text):
    return [line.split()[0] for line in text.splitlines()]


def version():
    """As CMake itself reads it."""
    return re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", content(ROOT, "build/windows/CMakeCache.txt").decode(),
                     re.MULTILINE).group(1)


def pack(*options, script=os.path.join(ROOT, "packaging", "make_package.py"), **environment):
    """Runs the packing. `environment` replaces or, where it is None, removes a variable."""
    variables = dict(os.environ, SOURCE_DATE_EPOCH=str(SECONDS), ZEL_DOWNLOAD_URL=BASE) | environment
    return subprocess.run([sys.executable, script, *options],
                          env={name: value for name, value in variables.items() if value is not None},
                          capture_output=True, text=True, check=False)


def scratch_folder():
    return tempfile.TemporaryDirectory(prefix="zel_package_", dir=os.path.join(ROOT, "build"))


@contextlib.contextmanager
def package(**environment):
    """A new folder with what the packing wrote."""
    with scratch_folder() as folder:
        done = pack("--out", folder, **environment)
        check(done.returncode == 0, f"the packing failed: {done.stderr}")
        yield folder


def archive_of(folder):
    return os.path.join(folder, f"ZelEngine-{version()}-win64.zip")


@contextlib.contextmanager
def unpacked(parent=""):
    """The package's papers, and its zip unpacked into `parent` below a new folder."""
    with package() as folder:
        place = os.path.join(folder, "unpacked", parent)
        with zipfile.ZipFile(archive_of(folder)) as archive:
            archive.extractall(place)
        yield folder, os.path.join(place, f"ZelEngine-{version()}")


def files_below(folder):
    return {os.path.relpath(os.path.join(parent, name), folder)
            for parent, _, names in os.walk(folder) for name in names}


def the_sums_cover_and_fit_every_file_of_the_package():
    with package() as folder:
        listed = output("sha256sum", "--check", "--strict", "SHA256SUMS", cwd=folder).splitlines()
        check({line.removesuffix(": OK") for line in listed} == files_below(folder) - {"SHA256SUMS"},
              f"checked: {listed}")


def packing_twice_gives_the_same_bytes():
    with package() as first, package(TZ="Asia/Tokyo", LC_ALL="C", PYTHONHASHSEED="7", HOME="/") as second:
        check(files_below(first) == files_below(second), "other files")
        differing = [name for name in files_below(first) if content(first, name) != content(second, name)]
        check(not differing, f"{differing} differ")


def entries_are_sorted_and_carry_one_time_and_plain_modes():
    with package() as folder, zipfile.ZipFile(archive_of(folder)) as archive:
        check(archive.testzip() is None, "an entry is damaged")
        entries = archive.infolist()
        names = [entry.filename for entry in entries]
        check(names == sorted(set(names)) and len(names) > 50, f"the entries are {names}")
        outside = [name for name in names if not name.startswith(f"ZelEngine-{version()}/") or ".." in name]
        check(not outside, f"outside the one folder: {outside}")
        times = {entry.date_time for entry in entries}
        check(times == {time.gmtime(SECONDS)[:6]}, f"the times are {times}")
        modes = {oct(entry.external_attr >> 16) for entry in entries}
        check(modes == {"0o100644", "0o100755"}, f"the modes are {modes}")


def commit(folder, seconds):
    """Makes the folder a repository with all that is in it, committed at that time."""
    git = ["git", "-C", folder, "-c", "user.name=Somebody", "-c", "user.email=somebody@example.invalid"]
    output("git", "init", "--quiet", folder)
    output(*git, "add", "--all")
    subprocess.run(git + ["commit", "--quiet", "--message", "All of it"], check=True,
                   env=dict(os.environ, GIT_AUTHOR_DATE="@1 +0000", GIT_COMMITTER_DATE=f"@{seconds} +0000"))


def copy_of_the_sources(folder):
    """Without their history. Every file has the same time but one, which is newer by an hour."""
    os.mkdir(folder)
    for name in ("assets", "cmake", "docs", "packaging", "sample", "src"):
        shutil.copytree(os.path.join(ROOT, name), os.path.join(folder, name),
                        ignore=shutil.ignore_patterns("__pycache__"))
    for name in ("CMakeLists.txt", "LICENSE", "CHANGELOG.md"):
        shutil.copy(os.path.join(ROOT, name), folder)
    for name in files_below(folder):
        os.utime(os.path.join(folder, name), (SECONDS, SECONDS - 3600))
    os.utime(os.path.join(folder, "docs", "guide", "en", "index.md"), (SECONDS, SECONDS))


def stored_times(sources):
    """The times in a package that those sources make when the environment says nothing."""
    out = os.path.join(sources, "dist")
    done = pack("--stage", STAGE, "--out", out, script=os.path.join(sources, "packaging", "make_package.py"),
                SOURCE_DATE_EPOCH=None)
    check(done.returncode == 0, f"the packing failed: {done.stderr}")
    with zipfile.ZipFile(archive_of(out)) as archive:
        return {entry.date_time for entry in archive.infolist()}


def the_time_is_that_of_the_last_commit_or_without_a_history_of_the_newest_source():
    with scratch_folder() as folder:
        sources = os.path.join(folder, "sources")
        copy_of_the_sources(sources)
        commit(folder, SECONDS + 7200)  # a repository around the sources, which is not theirs
        stored = stored_times(sources)
        check(stored == {time.gmtime(SECONDS)[:6]}, f"without a history: {stored}")
        commit(sources, SECONDS + 10800)
        stored = stored_times(sources)
        check(stored == {time.gmtime(SECONDS + 10800)[:6]}, f"with a history: {stored}")


def the_package_holds_the_program_its_images_every_sample_project_and_the_papers():
    with unpacked() as (_, folder):
        files = files_below(folder)
        check(content(folder, "ZelEngine.exe") == content(STAGE, "ZelEngine.exe"), "another program")
        pairs = [("assets", os.path.join(STAGE, "assets"))]
        samples = [name for name in os.listdir(os.path.join(ROOT, "sample"))
                   if os.path.exists(os.path.join(ROOT, "sample", name, "project.zel"))]
        check({"Project", "Dive", "Harvest"} <= set(samples), f"the samples are {samples}")
        pairs += [(name, os.path.join(ROOT, "sample", name)) for name in samples]
        pairs += [(os.path.join("docs", "guide"), os.path.join(ROOT, "docs", "guide"))]
        for name, source in pairs:
            expected = files_below(source)
            found = files_below(os.path.join(folder, name))
            check(found == expected, f"{name}: {found ^ expected} are only on one side")
            differing = [file for file in expected if content(folder, name, file) != content(source, file)]
            check(not differing, f"{name}: {differing} differ")
        check({"LICENSE", "CHANGELOG.md", "README.txt"} <= files, "LICENSE, CHANGELOG.md or README.txt is missing")


def the_symbols_of_the_program_lie_beside_the_zip_and_not_in_it():
    with package() as folder, zipfile.ZipFile(archive_of(folder)) as archive:
        name = f"ZelEngine-{version()}-win64.debug"
        check(content(folder, name) == content(STAGE + ".debug"), "others than those of the staged program")
        check(name in content(folder, "SHA256SUMS").decode(), "no sum of it")
        inside = [entry for entry in archive.namelist() if "debug" in entry]
        check(not inside, f"in the zip: {inside}")


def the_terms_of_the_compilers_runtime_come_along():
    with unpacked() as (_, folder):
        check("Runtime Library Exception" in content(folder, "licenses", "gcc.txt").decode(), "gcc.txt")
        check("winpthreads" in content(folder, "licenses", "mingw-w64.txt").decode(), "mingw-w64.txt")


def every_relative_link_of_the_packed_documents_leads_to_a_packed_file():
    with unpacked() as (_, folder):
        pages = [name for name in files_below(folder) if name.endswith(".md")]
        links = [(page, target) for page in pages
                 for target in re.findall(r"\]\(([^)#\s]+)", content(folder, page).decode()) if "://" not in target]
        check(len(links) > 60, f"only {len(links)} links were found")
        broken = [link for link in links
                  if not os.path.exists(os.path.join(folder, os.path.dirname(link[0]), link[1]))]
        check(not broken, f"broken: {broken}")
        readme = content(folder, "README.txt").decode()
        named = re.findall(r"docs/\S+\.md|CHANGELOG\.md|LICENSE|ZelEngine\.exe", readme)
        check({"docs/guide/en/index.md", "docs/guide/cs/index.md"} <= set(named), f"README.txt names {named}")
        missing = [name for name in named if not os.path.exists(os.path.join(folder, name))]
        check(not missing, f"README.txt names {missing}")


def the_spdx_document_lists_every_file_with_its_sums_and_the_code_of_all():
    with unpacked() as (papers, folder):
        document = json.loads(content(papers, f"ZelEngine-{version()}-win64.spdx.json"))
        root = os.path.dirname(folder)
        names = ["./" + name for name in sorted(files_below(root))]
        check([record["fileName"] for record in document["files"]] == names, "other files")
        for algorithm, command in (("SHA1", "sha1sum"), ("SHA256", "sha256sum")):
            real = first_words(output(command, "--", *names, cwd=root))
            said = [found["checksumValue"] for record in document["files"] for found in record["checksums"]
                    if found["algorithm"] == algorithm]
            check(said == real, f"{algorithm} of the files differs")

        [described] = document["packages"]
        code = output("bash", "-c", "find . -type f -exec sha1sum {} + | cut -c 1-40 | LC_ALL=C sort | tr -d '\\n' | "
                      "sha1sum | cut -c 1-40", cwd=root).strip()
        check(described["packageVerificationCode"] == {"packageVerificationCodeValue": code}, f"the code is {code}")
        check(described["checksums"][1]["checksumValue"] == first_words(output("sha256sum", archive_of(papers)))[0],
              "the zip has another sum")
        check(described["versionInfo"] == version(), f"the version is {described['versionInfo']}")


def the_spdx_document_has_what_every_such_document_must_have():
    with package() as folder:
        document = json.loads(content(folder, f"ZelEngine-{version()}-win64.spdx.json"))
    check((document["spdxVersion"], document["dataLicense"], document["SPDXID"]) ==
          ("SPDX-2.3", "CC0-1.0", "SPDXRef-DOCUMENT"), "the head is another")
    check(re.fullmatch(r"https://downloads\.invalid/zel/spdx/[A-Za-z0-9.-]+", document["documentNamespace"]),
          f"the namespace is {document['documentNamespace']}")
    check(document["creationInfo"]["created"] == time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(SECONDS)),
          f"created {document['creationInfo']['created']}")
    check(all(re.match(r"(Person|Organization|Tool): \S", who) for who in document["creationInfo"]["creators"]),
          f"the creators are {document['creationInfo']['creators']}")

    [described] = document["packages"]
    for record in [described] + document["files"]:
        name = record.get("fileName", "the package")
        check(re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", record["SPDXID"]), f"{name}: {record['SPDXID']}")
        is_foreign = name == "the package" or name.endswith(".exe") or "/licenses/" in name
        check(record["licenseConcluded"] == ("NOASSERTION" if is_foreign else "MIT"), f"{name}: the license")
        check(record["copyrightText"], f"{name}: no copyright")
    notice = re.search("^Copyright .*", content(ROOT, "LICENSE").decode(), re.MULTILINE).group(0)
    noticed = {record["fileName"].split("/")[-1] for record in document["files"] if record["copyrightText"] == notice}
    check(noticed == {"LICENSE", "ZelEngine.exe"}, f"the notice stands in {noticed}")
    check(described["licenseDeclared"] == "MIT" and described["filesAnalyzed"], "the package's license")
    check(described["downloadLocation"] == f"{BASE}/{described['packageFileName']}", described["downloadLocation"])

    identifiers = [described["SPDXID"]] + [record["SPDXID"] for record in document["files"]]
    check(len(set(identifiers)) == len(identifiers), "an identifier stands twice")
    relations = {(one["spdxElementId"], one["relationshipType"], one["relatedSpdxElement"])
                 for one in document["relationships"]}
    expected = {("SPDXRef-DOCUMENT", "DESCRIBES", identifiers[0])}
    expected |= {(identifiers[0], "CONTAINS", identifier) for identifier in identifiers[1:]}
    check(relations == expected, "the relations are others")


def the_winget_manifest_names_this_zip_and_the_program_in_it():
    with package() as folder:
        manifests = {}
        for name in os.listdir(os.path.join(folder, "winget")):
            manifest = yaml.safe_load(content(folder, "winget", name))
            manifests[manifest["ManifestType"]] = manifest
            suffix = {"version": "", "installer": ".installer", "defaultLocale": ".locale.en-US"}
            expected = f"{manifest['PackageIdentifier']}{suffix[manifest['ManifestType']]}.yaml"
            check(name == expected, f"{name} is called so and not {expected}")
        check(set(manifests) == {"version", "installer", "defaultLocale"}, f"there are {set(manifests)}")
        for field in ("PackageIdentifier", "PackageVersion", "ManifestVersion"):
            check(len({manifest[field] for manifest in manifests.values()}) == 1, f"different {field}")

        installer = manifests["installer"]
        check(installer["PackageVersion"] == version(), f"the version is {installer['PackageVersion']}")
        check((installer["InstallerType"], installer["NestedInstallerType"]) == ("zip", "portable"), "another type")
        [download] = installer["Installers"]
        real = first_words(output("sha256sum", archive_of(folder)))[0]
        check(download["InstallerSha256"] == real.upper(), f"the sum is {download['InstallerSha256']}")
        check(download["InstallerUrl"] == f"{BASE}/{os.path.basename(archive_of(folder))}", download["InstallerUrl"])
        check(download["Architecture"] == "x64", f"for {download['Architecture']}")
        [nested] = installer["NestedInstallerFiles"]
        with zipfile.ZipFile(archive_of(folder)) as archive:
            check(nested["RelativeFilePath"].replace("\\", "/") in archive.namelist(), f"no {nested}")
        locale = manifests["defaultLocale"]
        check(manifests["version"]["DefaultLocale"] == locale["PackageLocale"] == "en-US", "another language")
        for field in ("Publisher", "PackageName", "License", "ShortDescription"):
            check(isinstance(locale[field], str) and locale[field], f"no {field}")


def without_a_place_for_downloads_the_papers_name_a_host_that_cannot_exist():
    with scratch_folder() as folder:
        done = pack("--out", folder, ZEL_DOWNLOAD_URL=None)
        manifest = content(folder, "winget", "ZelEngine.ZelEngine.installer.yaml").decode()
        check("InstallerUrl: https://example.invalid/" in manifest, manifest)
        check("Set ZEL_DOWNLOAD_URL." in done.stdout, f"it says {done.stdout}")


def refuses(claim, *options, **environment):
    with scratch_folder() as folder:
        out = os.path.join(folder, "out")
        done = pack(*options, "--out", out, **environment)
        check(done.returncode == 1 and claim in done.stderr, f"code {done.returncode}: {done.stderr}")
        check("Traceback" not in done.stderr and not os.path.exists(out), "it went on")


def without_a_program_there_is_no_package():
    with scratch_folder() as stage:
        refuses("No package: no program has been built", "--stage", stage)


def a_program_of_another_version_is_not_packed():
    with scratch_folder() as stage:
        program = content(STAGE, "ZelEngine.exe")
        ours, other = (f"ProductVersion\0{text}\0".encode("utf-16-le") for text in (version(), "9.9.9"))
        check(program.count(ours) == 1, "the version stands elsewhere")
        for changed, said in ((program.replace(ours, other), "is of version 9.9.9"), (b"MZ", "is of version unknown")):
            with open(os.path.join(stage, "ZelEngine.exe"), "wb") as file:
                file.write(changed)
            refuses(said, "--stage", stage)


def a_program_whose_symbols_are_missing_is_packed_on_request_only():
    with scratch_folder() as stage:
        shutil.copy(os.path.join(STAGE, "ZelEngine.exe"), stage)
        refuses("the symbols of the program are missing", "--stage", stage)
        out = os.path.join(stage, "out")
        done = pack("--stage", stage, "--out", out, "--without-symbols")
        check(done.returncode == 0 and os.path.isfile(archive_of(out)), f"the packing failed: {done.stderr}")


def a_date_that_is_none_is_refused():
    refuses("set SOURCE_DATE_EPOCH", SOURCE_DATE_EPOCH="yesterday")


def viewport_of(folder):
    """What the editor shows of the sample project that lies beside the program."""
    with running(folder) as editor:
        editor.open_first_project()
        return editor.picture()


def unpacked_into_a_folder_with_blanks_and_czech_letters_the_program_runs_plays_and_saves():
    with unpacked(USER_FOLDER) as (_, folder):
        project = os.path.join(folder, "Project")
        files = [os.path.join(project, name) for name in ("project.zel", os.path.join("Files", "Scenes", "Main.scene"))]
        stored = [content(file) for file in files]
        with running(folder) as editor:
            editor.picture().save("package_hub")
            check(editor.title() == HUB_TITLE, f"the title is '{editor.title()}'")
            editor.open_first_project()
            check(editor.title() == "ZelEngine - Project", f"the title is '{editor.title()}'")
            shown = editor.picture()
            shown.save("package_editor")

            editor.press("p")
            wait_for(lambda: editor.picture().share_equal_to(shown, VIEWPORT) < 0.9, "the view of the game's camera")
            editor.press("p")
            wait_for(lambda: editor.picture().share_equal_to(shown, VIEWPORT) == 1, "the view of before")

            for file in files:
                os.remove(file)
            editor.press("ctrl+s")
            wait_for(lambda: all(map(os.path.exists, files)), "the saved project")
            check([content(file) for file in files] == stored, "the saved project differs")
            editor.press("Escape")
            check(editor.exit_code() == 0, f"the exit code is {editor.process.returncode}")
        check(viewport_of(STAGE).share_equal_to(shown, VIEWPORT) == 1, "the staged program shows another picture")


def the_unpacked_program_is_a_game_beside_the_sample_project():
    with unpacked(USER_FOLDER) as (_, folder):
        shutil.copy(os.path.join(folder, "ZelEngine.exe"), os.path.join(folder, "Project", "ZelGame.exe"))
        with running(os.path.join(folder, "Project"), "ZelGame.exe") as game:
            check(game.title() == "ZelGame", f"the title is '{game.title()}'")


if __name__ == "__main__":
    sys.exit(0 if run_tests([
        the_sums_cover_and_fit_every_file_of_the_package,
        packing_twice_gives_the_same_bytes,
        entries_are_sorted_and_carry_one_time_and_plain_modes,
        the_time_is_that_of_the_last_commit_or_without_a_history_of_the_newest_source,
        the_package_holds_the_program_its_images_every_sample_project_and_the_papers,
        the_symbols_of_the_program_lie_beside_the_zip_and_not_in_it,
        the_terms_of_the_compilers_runtime_come_along,
        every_relative_link_of_the_packed_documents_leads_to_a_packed_file,
        the_spdx_document_lists_every_file_with_its_sums_and_the_code_of_all,
        the_spdx_document_has_what_every_such_document_must_have,
        the_winget_manifest_names_this_zip_and_the_program_in_it,
        without_a_place_for_downloads_the_papers_name_a_host_that_cannot_exist,
        without_a_program_there_is_no_package,
        a_program_of_another_version_is_not_packed,
        a_program_whose_symbols_are_missing_is_packed_on_request_only,
        a_date_that_is_none_is_refused,
        unpacked_into_a_folder_with_blanks_and_czech_letters_the_program_runs_plays_and_saves,
        the_unpacked_program_is_a_game_beside_the_sample_project,
    ]) else 1)
