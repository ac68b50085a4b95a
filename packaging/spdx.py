"""The parts list of a package in the form of SPDX 2.3, as JSON."""

import hashlib
import json
import os
import time
import uuid

LICENSE = "MIT"
FILE_TYPES = {".exe": "BINARY", ".png": "IMAGE", ".md": "DOCUMENTATION", ".txt": "DOCUMENTATION", ".cpp": "SOURCE",
              ".scene": "TEXT", ".prefab": "TEXT", ".blueprint": "TEXT", ".zel": "TEXT", ".obj": "TEXT"}
RUNTIME = ("Made from this project's own sources, under MIT. It also holds parts of the compiler's runtime libraries, "
           "whose terms lie in the folder licenses.")


def sums(data):
    return [{"algorithm": "SHA1", "checksumValue": hashlib.sha1(data).hexdigest()},
            {"algorithm": "SHA256", "checksumValue": hashlib.sha256(data).hexdigest()}]


def verification_code(files):
    """The SHA-1 of the files' SHA-1 sums, sorted and put together without anything between them."""
    return hashlib.sha1("".join(sorted(hashlib.sha1(data).hexdigest() for data in files.values())).encode()).hexdigest()


def file_record(number, name, data, copyright_line):
    """`copyright_line` counts where the file says it, as text or in a program's version."""
    kind = os.path.splitext(name)[1]
    is_foreign = kind == ".exe" or "/licenses/" in name  # at least in parts
    said = any(copyright_line.encode(code) in data for code in ("utf-8", "utf-16-le"))
    record = {
        "SPDXID": f"SPDXRef-File-{number}",
        "fileName": "./" + name,
        "fileTypes": [FILE_TYPES.get(kind, "OTHER")],
        "checksums": sums(data),
        "licenseConcluded": "NOASSERTION" if is_foreign else LICENSE,
        "licenseInfoInFiles": [LICENSE if os.path.basename(name) == "LICENSE" else "NONE"],
        "copyrightText": copyright_line if said else "NONE",
    }
    if kind == ".exe":
        record["licenseComments"] = RUNTIME
    return record


def document(release, files):
    """Its text. `files` are the paths in the zip and what is in them."""
    name = release["archive"].removesuffix(".zip")
    # A name that no other document has, and the same for the same zip.
    unique = uuid.uuid5(uuid.NAMESPACE_URL, f"{release['url']}#{release['sha256']}")
    records = [file_record(number, name, files[name], release["copyright"])
               for number, name in enumerate(sorted(files), start=1)]
    package = {
        "SPDXID": "SPDXRef-Package",
        "name": "ZelEngine",
        "versionInfo": release["version"],
        "packageFileName": release["archive"],
        "supplier": "Organization: The ZelEngine developers",
        "downloadLocation": release["url"],
        "filesAnalyzed": True,
        "packageVerificationCode": {"packageVerificationCodeValue": verification_code(files)},
        "checksums": [{"algorithm": "SHA1", "checksumValue": release["sha1"]},
                      {"algorithm": "SHA256", "checksumValue": release["sha256"]}],
        "primaryPackagePurpose": "APPLICATION",
        "licenseConcluded": "NOASSERTION",  # for the sake of the runtime's parts
        "licenseDeclared": LICENSE,
        "licenseInfoFromFiles": [LICENSE],
        "licenseComments": "The file LICENSE holds for all files, also for those that do not say so, but not for the "
                           "parts of the compiler's runtime, whose terms lie in the folder licenses.",
        "copyrightText": release["copyright"],
    }
    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", package["SPDXID"])]
    relations += [(package["SPDXID"], "CONTAINS", record["SPDXID"]) for record in records]
    return json.dumps({
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": name,
        "documentNamespace": f"{release['url'].rsplit('/', 1)[0]}/spdx/{name}-{unique}",
        "creationInfo": {
            "created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(release["seconds"])),
            "creators": ["Organization: The ZelEngine developers", f"Tool: ZelEngine-package-{release['version']}"],
        },
        "packages": [package],
        "files": records,
        "relationships": [{"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}
                          for one, kind, other in relations],
    }, indent=2, ensure_ascii=False) + "\n"
