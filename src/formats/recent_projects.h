// The per-user list of projects that the Project Hub shows, most recent first, in
// EditorState::recentProjects and in "recent-projects.txt". Failures of its file are not reported.
#pragma once

#include <cstddef>
#include <string>

inline constexpr size_t kMaxRecentProjects = 12;

// "ZelEngine" in the user's local application data; "ZelEngineData" beside the executable when that cannot be
// told. Made when it is missing.
std::wstring GetDataFolder();

// Puts a project folder at the front of the list, by its full path. An older entry for the same path, in any
// case of its letters, is removed, and so is everything beyond the twelfth. Does nothing for a folder that is
// not a project.
void AddRecentProject(const std::wstring& path);

// Rebuilds the list from its file, without what is no project any more, and saves it. Entries on drives and
// servers that may answer late are not asked about: they stay, with the answer None. An empty list gets the
// folder "Project" of the working folder when that is one.
void LoadRecentProjects();

// Writes the entries that are project folders now, and those on drives that may answer late as they are.
void SaveRecentProjects();
