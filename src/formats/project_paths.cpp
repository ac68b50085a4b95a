#include "formats/project_paths.h"

#include "base/path_text.h"
#include "state/editor_state.h"

std::wstring MakeProjectRelative(std::wstring_view path) { return RelativeTo(path, editorState.projectRoot); }

std::wstring JoinProjectPath(std::wstring_view stored) { return JoinPath(editorState.projectRoot, stored); }
