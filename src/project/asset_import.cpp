#include "project/asset_import.h"

#include "base/letter_case.h"
#include "base/path_text.h"
#include "blueprint/blueprint_editor.h"
#include "formats/obj_file.h"
#include "platform/files.h"
#include "project/asset_creation.h"
#include "project/asset_list.h"
#include "project/folder_copy.h"
#include "project/project_folder.h"
#include "scene/commands.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "state/editor_state.h"

constexpr size_t kLongestPath = 260;

// In one step that keeps the old file when it fails, unlike a copy.
static bool ReplaceFile(const std::wstring& from, const std::wstring& to) {
    if (SameWithoutCase(AbsolutePath(from), AbsolutePath(to))) return false;
    std::string bytes;
    return ReadWholeFile(from, bytes) && WriteWholeFile(to, bytes);
}

static bool CopyInto(const std::wstring& from, const std::wstring& to, LongWork& work) {
    switch (KindOfPath(to)) {
        case PathKind::Missing:
            return CopyToFreePath(from, to, [&work](int64_t, int64_t) { return work.Continue(); });
        case PathKind::File: return ReplaceFile(from, to);
        default: return false;
    }
}

static bool ImportFile(const std::wstring& path, LongWork& work) {
    if (path.size() > kLongestPath || KindOfPath(path) != PathKind::File) return false;
    const std::wstring copy = JoinPath(editorState.filesFolder, LastComponent(path));
    if (!CopyInto(path, copy, work)) return false;
    AddNewAsset(copy, false);
    return true;
}

static void PlaceModel(const std::wstring& path) {
    const int32_t mesh = LoadObjIntoLibrary(path);
    if (mesh >= 0) addModelObject(mesh, NameWithoutExtension(path));
}

void ImportDroppedFiles(std::span<const std::wstring> paths) {
    MakeProjectFolders();
    LongWork work(L"Importuji", L"souboru", LongWork::Esc::Cancels);
    size_t imported = 0;
    for (size_t i = 0; i < paths.size(); ++i) {
        if (!work.Continue(static_cast<int64_t>(i), static_cast<int64_t>(paths.size()))) break;
        const std::wstring& path = paths[i];
        if (!ImportFile(path, work)) continue;
        ++imported;
        if (AssetKindOf(path) == AssetKind::Model && ShownScreen() != Shown::Blueprint) {
            PlaceModel(JoinPath(editorState.filesFolder, LastComponent(path)));
        }
    }
    SetStatus((work.IsCancelled() ? L"Import zrusen. Importovano " : L"Importovano ") +
              std::to_wstring(imported) + L" souboru do aktualni slozky.");
}
