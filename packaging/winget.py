"""The manifest by which winget installs the zip: three small YAML files."""

IDENTIFIER = "ZelEngine.ZelEngine"
SCHEMA = "1.9.0"  # the first that knows ArchiveBinariesDependOnPath


def manifests(release, executable):
    """File names and their texts. `executable` is its path in the zip, with backslashes."""
    head = f"PackageIdentifier: {IDENTIFIER}\nPackageVersion: {release['version']}\n"

    def manifest(kind, text):
        return f"{head}{text}ManifestType: {kind}\nManifestVersion: {SCHEMA}\n"

    return {
        f"{IDENTIFIER}.yaml": manifest("version", "DefaultLocale: en-US\n"),
        # Not started through a link in another folder, because the program's assets lie beside it.
        f"{IDENTIFIER}.installer.yaml": manifest("installer", f"""\
InstallerType: zip
NestedInstallerType: portable
NestedInstallerFiles:
  - RelativeFilePath: {executable}
    PortableCommandAlias: zelengine
ArchiveBinariesDependOnPath: true
Installers:
  - Architecture: x64
    InstallerUrl: {release['url']}
    InstallerSha256: {release['sha256'].upper()}
"""),
        f"{IDENTIFIER}.locale.en-US.yaml": manifest("defaultLocale", f"""\
PackageLocale: en-US
Publisher: The ZelEngine developers
PackageName: ZelEngine
Moniker: zelengine
License: MIT
Copyright: {release['copyright']}
ShortDescription: A small desktop editor for 3D scenes that is also the runtime that plays them.
Tags:
  - 3d
  - editor
  - game-development
"""),
    }
