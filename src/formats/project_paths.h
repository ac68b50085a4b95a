// The two rules by which stored references follow the open project's folder.
#pragma once

#include <string>
#include <string_view>

// As a file stores it: the part below EditorState::projectRoot, or the path as it is outside of it.
std::wstring MakeProjectRelative(std::wstring_view path);

// As the program uses it: `stored` under EditorState::projectRoot, the folder itself when it is empty. A path
// that was stored as absolute does not resolve: it is joined like any other.
std::wstring JoinProjectPath(std::wstring_view stored);
