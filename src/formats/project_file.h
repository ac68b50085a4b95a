// The file that makes a folder a project, and that its scene survives in.
#pragma once

#include "state/recent_project.h"

#include <string>
#include <string_view>

inline constexpr const wchar_t* kProjectFileName = L"project.zel";
inline constexpr const wchar_t* kFilesFolderName = L"Files";

// The scene that a project has when it names no other: Scenes\Main.scene in its Files folder.
std::wstring MainScenePath(const std::wstring& filesRoot);

// True for a folder that holds a "project.zel" of any kind, or a folder "Files".
bool IsProjectFolder(const std::wstring& path);

// The same question where the disk may not answer: only a sure NoProject takes a project off a list.
ProjectAnswer LookForProject(const std::wstring& path);

// Writes "project.zel" into `folder`, which is made when it is missing: the current scene's path relative to
// it, and a copy of the open scene. False, with the old file as it was, when it cannot be written.
bool WriteProjectFile(const std::wstring& folder);

// The same for a copy of the open project in `folder`: every path is written relative to the open project,
// and so stands for the same place in the copy.
bool WriteProjectCopy(const std::wstring& folder);

// After `from` was renamed to `to`: where the project file of the open project names a scene that is `from`
// or lies below it, it names the same place under `to` from now on, and the rest of the file stays. False
// when the file cannot be read or written; true when there is nothing to change.
bool MoveCurrentScene(const std::wstring& from, const std::wstring& to);

// Loads the scene that the project in `folder` names and makes it the current one; ".", ".." and doubled
// separators in its path are resolved. When it is not named, not there, not readable or named by a path that
// leads out of the folder, to a drive, a stream or a device, the current scene becomes
// Files\Scenes\Main.scene with the objects that the project file keeps. False, with the old scene as it was,
// when the project file cannot be read or memory does not suffice for it.
bool ReadProjectFile(const std::wstring& folder);

// As a file stores it: the part below EditorState::projectRoot, or the path as it is outside of it.
std::wstring MakeProjectRelative(std::wstring_view path);

// As the program uses it: `stored` under EditorState::projectRoot, the folder itself when it is empty. A path
// that was stored as absolute does not resolve: it is joined like any other.
std::wstring JoinProjectPath(std::wstring_view stored);
