#include "project/asset_creation.h"

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/path_text.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <string_view>

constexpr std::wstring_view kNewScene = L"ZELENGINE_SCENE\t1\n";
constexpr std::string_view kNewScript =
    "// ZelEngine script\n"
    "\n"
    "void Update() {\n"
    "}\n";
constexpr std::wstring_view kNewBlueprint =
    L"ZELENGINE_BLUEPRINT\t1\n"
    L"NODE\t1\tEvent BeginPlay\t130\t130\n"
    L"NODE\t2\tPrint String\t420\t130\n";

constexpr int32_t kLastNumber = 9999;  // ends the search where the disk has stopped answering

static std::wstring Numbered(const std::wstring& name, int32_t number, const std::wstring& extension) {
    return name + L"_" + Padded(number, 2) + extension;
}

// What is made stands in the list, and nothing that fails does.
static void Finish(bool isMade, const std::wstring& path, bool isFolder, const wchar_t* message) {
    if (!isMade) {
        SetStatus(L"Polozku projektu se nepodarilo vytvorit.");
        return;
    }
    AddNewAsset(path, isFolder);
    SetStatus(message);
}

static bool IsFree(const std::wstring& path) { return KindOfPath(path) == PathKind::Missing; }

std::wstring FirstFreePath(const std::wstring& folder, const std::wstring& name,
                           const std::wstring& extension) {
    for (int32_t number = 1; number <= kLastNumber; ++number) {
        std::wstring path = JoinPath(folder, Numbered(name, number, extension));
        if (IsFree(path)) return path;
    }
    return {};
}

std::wstring FreePath(const std::wstring& folder, const std::wstring& name, const std::wstring& extension) {
    const std::wstring path = JoinPath(folder, name + extension);
    return IsFree(path) ? path : FirstFreePath(folder, name, extension);
}

// In the folder that the Files panel shows.
static std::wstring NewPath(const std::wstring& name, const std::wstring& extension) {
    return FirstFreePath(editorState.filesFolder, name, extension);
}

void AddNewAsset(const std::wstring& path, bool isFolder) {
    auto& entries = editorState.fileEntries;
    auto place = std::ranges::find_if(entries, [&path](const AssetEntry& entry) {
        return SameWithoutCase(entry.path, path);  // the disk knows no difference
    });
    if (place == entries.end()) place = entries.insert(place, AssetEntryFor(path, isFolder));
    editorState.selectedFile = static_cast<int32_t>(place - entries.begin());
}

void CreateSceneAsset() {
    // The number of entries, whether or not that name is free; a scene that stands there is not overwritten.
    const auto count = static_cast<int32_t>(editorState.fileEntries.size());
    std::wstring path = JoinPath(editorState.filesFolder, Numbered(L"Scene", count, L".scene"));
    if (!IsFree(path)) path = NewPath(L"Scene", L".scene");
    Finish(WriteTextFile(path, kNewScene), path, false, L"Vytvorena nova scene v projektu.");
}

void CreateScriptAsset() {
    const std::wstring path = NewPath(L"Script", L".cpp");
    Finish(WriteWholeFile(path, kNewScript), path, false, L"Vytvoren novy script v projektu.");
}

void CreateBlueprintAsset() {
    const std::wstring path = NewPath(L"Blueprint", L".blueprint");
    Finish(WriteTextFile(path, kNewBlueprint), path, false,
           L"Vytvoren novy Blueprint v projektu. Dvojklikem ho otevres.");
}

void CreateFolderAsset() {
    const std::wstring path = NewPath(L"NewFolder", L"");
    Finish(MakeFolders(path), path, true, L"Vytvorena nova slozka v projektu.");
}
