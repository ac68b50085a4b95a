// What the Project Hub does: it opens listed projects, takes them off the list or the disk, and creates new
// ones. hub_screen.h shows it.
#pragma once

#include "base/rect.h"
#include "project/hub_screen.h"

#include <cstdint>
#include <string>

// Shows the Hub at the program's start.
void ShowHub();

// Goes back to the Hub from the editor. A game stops; a scene with changes is asked about, and Cancel stays.
void ReturnToHub();

// The menu of a project, while it is open.
void DrawProjectMenu(const HubLayout& layout);

// Each takes a click: true when it lay in the client area.
bool HubLeftClick(Point pointer, const HubLayout& layout);
bool HubRightClick(Point pointer, const HubLayout& layout);

// The index into EditorState::recentProjects of the project that was drawn under a point. -1 for none, or if
// it has left the list.
int32_t ProjectRowAt(Point point);

// Called once per frame of the Hub. Asks the disk about the entries that LoadRecentProjects did not ask
// about, one after the other and on another thread, so that nobody waits for a drive or server that does not
// answer. What is no project leaves the list; what cannot be reached stays, with the answer Silent. True
// when an answer has come.
bool CheckListedProjects();

// The folder stays. `index` is a valid index into EditorState::recentProjects, here and below.
void RemoveProjectFromList(int32_t index);

// Moves the project's folder into the recycle bin, after a question.
void DeleteProjectFromDisk(int32_t index);

// False when it is no folder, when the program runs from within it (the status message says so), or when the
// system refuses.
bool MoveFolderToRecycleBin(const std::wstring& path);
