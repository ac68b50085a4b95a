#include "formats/project_paths.h"

#include "formats/path_text.h"
#include "scene/editor_state.h"

std::wstring MakeProjectRelative(std::wstring_view path) { return RelativeTo(path, editorState.projectRoot); }

std::wstring JoinProjectPath(std::wstring_view stored) { return JoinPath(editorState.projectRoot, stored); }
