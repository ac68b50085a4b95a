// The Project Hub: the projects that the user has had open, and templates for new ones.
#pragma once

#include "base/rect.h"
#include "project/hub_layout.h"

#include <cstdint>

// The whole screen. What lies under the pointer and can be clicked is lit up.
void DrawProjectHub(const HubLayout& layout);

// The menu of a project, while it is open.
void DrawProjectMenu(const HubLayout& layout);

// Each takes a click: true when it lay in the client area.
bool HubLeftClick(Point pointer, const HubLayout& layout);
bool HubRightClick(Point pointer, const HubLayout& layout);

// The index into EditorState::recentProjects of the project drawn under a point, -1 for none, or when it has
// left the list.
int32_t ProjectRowAt(Point point);

// Shows the Hub at the program's start.
void ShowHub();

// Goes back to the Hub from the editor. A game stops; a scene with changes is asked about, and Cancel stays.
void ReturnToHub();
