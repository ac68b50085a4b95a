#include "project/project_folder.h"

#include "formats/path_text.h"
#include "formats/project_file.h"
#include "scene/editor_state.h"

void SetProjectFolder(const std::wstring& folder) {
    editorState.projectRoot = folder;
    editorState.filesRoot = JoinPath(folder, kFilesFolderName);
    editorState.filesFolder = editorState.filesRoot;
}
