// What the Project Hub does: the projects that the user has had open, opened, taken off the list or the disk,
// and templates for new ones.
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

// The index into EditorState::recentProjects of the project drawn under a point, -1 for none, or when it has
// left the list.
int32_t ProjectRowAt(Point point);

// Called once per frame of the Hub: asks the disk about the entries that LoadRecentProjects left open, one
// after the other and aside, so that nobody waits for a drive or server that does not answer. What is no
// project leaves the list; what cannot be reached stays, with the answer Silent. True when an answer has
// come.
bool CheckListedProjects();

// The folder stays. `index` is a valid index into EditorState::recentProjects, here and below.
void RemoveProjectFromList(int32_t index);

// Moves the project's folder into the recycle bin, after a question.
void DeleteProjectFromDisk(int32_t index);

// False when it is no folder, when the program runs from within it (the status message says so), or when the
// system refuses.
bool MoveFolderToRecycleBin(const std::wstring& path);
