// Saves two scenes of 5,000 objects in turn until it is killed, each in place of the other.
//
//   saving_program FOLDER versions    writes A.scene and B.scene; ends with 0 when both load again
//   saving_program FOLDER             saves Main.scene as A, B, A ...; says "saved N" once, after the first
//                                     save, with the number of files that it found in the folder then
//   saving_program FOLDER recovery    writes recoveries of Main.scene as A, B, A ...; says "saved 1" once,
//                                     after the first
#include "../support/scene_equals_file.h"
#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/recovery.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

constexpr int32_t kObjects = 5000;

// The versions differ in every line and in length.
static void ShowVersion(wchar_t version) {
    MarkChanged();
    editorState.scene.clear();
    for (int32_t i = 0; i < kObjects; ++i) {
        const std::wstring number = std::to_wstring(i);
        GameObject object;
        object.name = version == L'A' ? L"crate " + number : L"a crate of version B, " + number;
        object.position = {static_cast<float>(i), version == L'A' ? 0.5f : -12.25f, 3};
        editorState.scene.push_back(object);
    }
}

static bool WriteAndLoad(const std::wstring& path, wchar_t version) {
    ShowVersion(version);
    return SaveScene(path) && LoadScene(path) && editorState.scene.size() == kObjects &&
           SceneEqualsFile(path);
}

static size_t FilesIn(const std::wstring& folder) {
    std::vector<FolderEntry> entries;
    return ListFolder(folder, entries) ? entries.size() : 0;
}

static int SaveForEver(const std::wstring& folder) {
    LoadScene(folder + L"\\Main.scene");  // that of the run before, or it would be kept as another writer's
    for (bool isFirst = true;; isFirst = false) {
        for (const wchar_t version : {L'A', L'B'}) {
            ShowVersion(version);
            if (!SaveScene(folder + L"\\Main.scene")) return 3;
            if (!isFirst || version != L'A') continue;
            std::printf("saved %zu\n", FilesIn(folder));
            std::fflush(stdout);
        }
    }
}

// As an editor that is told again and again that the session ends, and goes on.
static int RecoverForEver(const std::wstring& folder) {
    editorState.projectRoot = folder;
    editorState.scenePath = folder + L"\\Main.scene";
    for (bool isFirst = true;; isFirst = false) {
        for (const wchar_t version : {L'A', L'B'}) {
            ShowVersion(version);
            WriteRecoveryNow();
            if (!isFirst || version != L'A') continue;
            std::printf("saved 1\n");
            std::fflush(stdout);
        }
    }
}

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) return 2;
    const std::string name = arguments[1];
    const std::wstring folder(name.begin(), name.end());
    if (argumentCount == 2) return SaveForEver(folder);
    if (std::string(arguments[2]) == "recovery") return RecoverForEver(folder);
    return WriteAndLoad(folder + L"\\A.scene", L'A') && WriteAndLoad(folder + L"\\B.scene", L'B') ? 0 : 1;
}
