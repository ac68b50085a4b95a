#include "formats/scene_file.h"

#include "formats/object_line.h"
#include "platform/files.h"
#include "scene/default_scenes.h"
#include "scene/editor_state.h"

#include <algorithm>

constexpr std::wstring_view kHeader = L"ZELENGINE_SCENE\t1";

bool SaveScene(const std::wstring& path) { return WriteObjectFile(path, kHeader, editorState.scene); }

bool SceneEqualsFile(const std::wstring& path) {
    std::string bytes;
    if (!ReadWholeFile(path, bytes)) return false;
    return bytes == TextFileBytes(ObjectFileText(kHeader, editorState.scene));
}

bool LoadScene(const std::wstring& path) {
    TextFile file;
    if (!ReadTextFile(path, file)) return false;

    // First, because the objects add their models and images to the fresh libraries.
    resetScene(true);
    Scene scene = ReadObjects(file);
    if (scene.empty()) {
        resetScene(true);
    } else {
        editorState.scene = std::move(scene);
    }
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = std::min(editorState.selectedIndex, last);
    return true;
}
