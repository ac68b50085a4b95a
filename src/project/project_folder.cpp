#include "project/project_folder.h"

#include "formats/path_text.h"
#include "scene/editor_state.h"

void SetProjectFolder(const std::wstring& folder) {
    editorState.projectRoot = folder;
    editorState.filesRoot = JoinPath(folder, L"Files");
    editorState.filesFolder = editorState.filesRoot;
}
