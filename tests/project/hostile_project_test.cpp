// Projects whose files were written to do harm: every path and name in them leads elsewhere. Nothing outside
// the folders that the user chose may be touched, and no other program may be started.
#include "blueprint/blueprint_editor.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "play/play_mode.h"
#include "project/asset_commands.h"
#include "project/prefab_editor.h"
#include "project/project_lifecycle.h"
#include "project/save_project.h"
#include "support/capture.h"
#include "support/folder_tree.h"
#include "support/frame_update.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <string>
#include <vector>

// A stored path is joined to the project's folder, projects\Hostile.
static std::vector<std::wstring> HostilePaths(const ScratchFolder& folder) {
    return {L"..\\..\\outside\\victim.scene",
            L"../../outside/victim.scene",
            L"Files\\..\\..\\..\\outside\\victim.scene",
            L"Files\\Scenes\\..\\..\\..\\..\\outside\\victim.scene",
            L".. \\.. \\outside\\victim.scene",
            L"..\\..\\outside\\new.scene",
            L"..",
            L"...",
            L"..\\Hostile\\project.zel",
            folder / L"outside\\victim.scene",
            L"C:\\outside\\victim.scene",
            L"C:victim.scene",
            L"\\\\server\\share\\victim.scene",
            L"\\\\?\\C:\\victim.scene",
            L"\\\\.\\COM1",
            L"\\victim.scene",
            L"Files\\Scenes\\Main.scene:stream",
            L"CON",
            L"Files\\NUL",
            L"Files\\Scenes\\COM1.scene",
            L"Files\\aux.scene\\x",
            L"LPT9",
            L"Files\\a*b?.scene",
            L"Files\\\x0001\x001F.scene",
            L"Files\\trailing.\\x.scene",
            std::wstring(100'000, L'n'),
            L"Files\\" + std::wstring(100'000, L'n') + L".scene",
            L"..\\" + std::wstring(100'000, L'.')};
}

constexpr const char* kVictim = "ZELENGINE_SCENE\t1\r\n";  // a scene that could be loaded, and so be saved to

// An object that names the path wherever an object can name one.
static std::string ObjectWith(const std::wstring& path) {
    const std::string text = EncodeUtf8(path);
    std::vector<std::string> fields(61, "0");
    fields[0] = "O";
    fields[1] = fields[49] = text;
    fields[8] = fields[9] = fields[10] = fields[17] = fields[48] = fields[31] = "1";
    fields[11] = "file:" + text;
    fields[13] = "-1";
    fields[30] = "CollectOnTouch;PlanePrefabSpawner;" + text;
    fields[37] = "1";
    fields[40] = fields[50] = fields[51] = fields[52] = fields[59] = text;
    std::string line;
    for (const std::string& field : fields) line += field + "\t";
    line.back() = '\n';
    return line;
}

static std::wstring HostileIn(const ScratchFolder& folder) { return folder / L"projects\\Hostile"; }

static void PutHostileProject(const ScratchFolder& folder, const std::wstring& path) {
    const std::wstring root = HostileIn(folder);
    const std::string line = ObjectWith(path);
    PutFile(root + L"\\project.zel", "ZELENGINE_PROJECT\t1\nFILES\t" + EncodeUtf8(path) +
                                         "\nCURRENT_SCENE\t" + EncodeUtf8(path) + "\n" + line);
    PutFile(root + L"\\Files\\Scenes\\Main.scene", "ZELENGINE_SCENE\t1\n" + line + line);
    PutFile(root + L"\\Files\\evil.prefab", "ZELENGINE_PREFAB\t1\n" + line);
    PutFile(root + L"\\Files\\evil.blueprint", "NODE\t1\t" + EncodeUtf8(path) + "\t5\t6\n");
    PutFile(root + L"\\Files\\evil.exe", "MZ");
}

static void StartWithHostileProject(const ScratchFolder& folder, const std::wstring& path) {
    StartIn(folder);
    PutFile(folder / L"outside\\victim.scene", kVictim);
    PutFile(folder / L"projects\\victim.scene", kVictim);
    PutFile(folder / L"work\\victim.scene", kVictim);
    PutFolder(folder / L"target");
    PutHostileProject(folder, path);
    ShowHub();
}

// What lies in the scratch folder, without the folders that the user chose and the program's own.
static FolderContents Untouchable(const ScratchFolder& folder) {
    FolderContents contents = ContentsOf(folder.path);
    std::erase_if(contents, [](const auto& entry) {
        return entry.first.starts_with(L"projects\\Hostile") || entry.first.starts_with(L"target") ||
               entry.first.starts_with(L"local");
    });
    return contents;
}

static int32_t EntryNamed(const std::wstring& name) {
    const auto& entries = editorState.fileEntries;
    return static_cast<int32_t>(std::ranges::find(entries, name, &AssetEntry::name) - entries.begin());
}

static void PlayForAWhile() {
    TapKey('P');
    for (int32_t frame = 0; frame < 5; ++frame) {
        UpdateFrame(0.02f);
        RenderFrame();
    }
    if (!editorState.runtimeMode) TapKey('P');
}

// Uses everything that writes, as an unsuspecting user does.
static void UseProject(const ScratchFolder& folder) {
    RenderFrame();
    SaveProject();
    PlayForAWhile();
    for (int32_t i = 0; i < static_cast<int32_t>(editorState.scene.size()); ++i) {
        editorState.selectedIndex = i;
        SavePrefabFromSelection();
    }
    OpenAsset(EntryNamed(L"evil.prefab"));
    editorState.prefabDirty = true;
    SavePrefabEditor();
    ClosePrefabEditor();
    OpenAsset(EntryNamed(L"evil.blueprint"));
    AddBlueprintNode(L"Event", {1, 1});
    SaveBlueprintEditor();
    CloseBlueprintEditor();
    Answers({Answer::Yes});
    OpenAsset(EntryNamed(L"Main.scene"));
    SaveProject();
    AnswerFolder(folder / L"target");
    BuildProject();
    AnswerFolder(folder / L"target");
    SaveProjectAs();
    SaveProject();
}

TEST_CASE("wherever the paths of a project lead, nothing outside its folder is written or started") {
    const size_t count = [] {
        const ScratchFolder folder;
        return HostilePaths(folder).size();
    }();
    for (size_t i = 0; i < count; ++i) {
        const ScratchFolder folder;
        const std::wstring path = HostilePaths(folder)[i];
        CAPTURE(EncodeUtf8(path.substr(0, 60)));
        StartWithHostileProject(folder, path);
        const FolderContents before = Untouchable(folder);
        CHECK(OpenProject(HostileIn(folder)) == Opening::Opened);
        CHECK(editorState.scenePath == HostileIn(folder) + L"\\Files\\Scenes\\Main.scene");
        UseProject(folder);
        CHECK(Untouchable(folder) == before);
        CHECK(headless.opened.empty());
        CHECK(headless.recycled.empty());
    }
}

TEST_CASE("a game beside a hostile project writes nothing outside its folder either") {
    const size_t count = [] {
        const ScratchFolder folder;
        return HostilePaths(folder).size();
    }();
    for (size_t i = 0; i < count; ++i) {
        const ScratchFolder folder;
        const std::wstring path = HostilePaths(folder)[i];
        CAPTURE(EncodeUtf8(path.substr(0, 60)));
        StartWithHostileProject(folder, path);
        const FolderContents before = Untouchable(folder);
        folderAnswers.executablePath = HostileIn(folder) + L"\\ZelGame.exe";
        CHECK(DetectRuntimeProject());
        editorState.hubVisible = false;
        PlayForAWhile();
        TapWithControl('S');
        CHECK(Untouchable(folder) == before);
        CHECK(headless.opened.empty());
    }
}

TEST_CASE("a name typed for a file never leads out of its folder") {
    for (const wchar_t* name : {L"..\\..\\outside\\x", L"../x", L"..", L".", L"C:x", L"\\\\server\\share\\x",
                                L"NUL", L"com1.scene", L"x:y", L"\x0001", L"x.", L"x "}) {
        CAPTURE(EncodeUtf8(name));
        const ScratchFolder folder;
        StartProject(folder);
        PutFile(FilesIn(folder) + L"\\a.txt", "a");
        OpenProject(ProjectIn(folder));
        const FolderContents before = ContentsOf(folder.path);
        RenameFileTo(L"a.txt", name);
        FolderContents after = ContentsOf(folder.path);
        std::erase_if(
            after, [](const auto& e) { return e.first.starts_with(L"projects\\ZelEngineProject\\Files\\"); });
        for (const auto& [path, bytes] : after) CHECK(before.contains(path));
        for (const auto& [path, bytes] : before) {
            if (!path.starts_with(L"projects\\ZelEngineProject\\Files\\")) CHECK(after.contains(path));
        }
    }
}

TEST_CASE("a scene path within the project is taken with its dots and separators resolved") {
    struct {
        const char* stored;
        const wchar_t* scene;
    } cases[] = {{".\\Files\\Scenes\\A.scene", L"Files\\Scenes\\A.scene"},
                 {"./Files/Scenes/A.scene", L"Files/Scenes/A.scene"},
                 {"Files\\\\Scenes\\A.scene", L"Files\\Scenes\\A.scene"},
                 {"Files//Scenes\\\\\\A.scene", L"Files/Scenes\\A.scene"},
                 {"\\Files\\Scenes\\A.scene", L"Files\\Scenes\\A.scene"},
                 {"//Files\\.\\Scenes\\.\\.\\A.scene", L"Files\\Scenes\\A.scene"},
                 {"Files\\..\\Files\\Scenes\\A.scene", L"Files\\Scenes\\A.scene"},
                 {"A.scene", L"A.scene"}};
    for (const auto& row : cases) {
        CAPTURE(row.stored);
        const auto& [stored, scene] = row;
        const ScratchFolder folder;
        StartIn(folder);
        const std::wstring root = HostileIn(folder), path = root + L"\\" + scene;
        PutFile(root + L"\\project.zel", std::string("CURRENT_SCENE\t") + stored + "\n");
        PutFile(path, kVictim);
        ShowHub();
        CHECK(OpenProject(root) == Opening::Opened);
        CHECK(editorState.scenePath == path);
        SaveProject();
        CHECK(KindOfPath(root + L"\\Files\\Scenes\\Main.scene") == PathKind::Missing);
        CHECK(FileBytes(root + L"\\project.zel").find("\r\nCURRENT_SCENE\t" + EncodeUtf8(scene) + "\r\n") !=
              std::string::npos);
    }
}

TEST_CASE("a project may name its scene by any path of plain names") {
    for (const wchar_t* scene : {L"Files\\Scenes\\Other.scene", L"Files/Scenes/Other.scene", L"Other.scene",
                                 L"Files\\a..b\\Other scene (2).scene", L"Files\\\u017Elu\u0165.scene"}) {
        CAPTURE(EncodeUtf8(scene));
        const ScratchFolder folder;
        StartIn(folder);
        const std::wstring root = HostileIn(folder);
        const std::wstring path = root + L"\\" + scene;
        PutFile(root + L"\\project.zel", "CURRENT_SCENE\t" + EncodeUtf8(scene) + "\n");
        PutFile(path, kVictim);
        ShowHub();
        CHECK(OpenProject(root) == Opening::Opened);
        CHECK(editorState.scenePath == path);
    }
}
