// Whether a scene file holds the open scene.
#pragma once

#include "formats/object_line.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "state/editor_state.h"

#include <string>

// True when saving the open scene would leave the file's bytes as they are.
inline bool SceneEqualsFile(const std::wstring& path) {
    std::string bytes;
    if (!ReadWholeFile(path, bytes)) return false;
    return bytes == TextFileBytes(ObjectFileText(L"ZELENGINE_SCENE\t1", editorState.scene));
}
