// The bar along the top: program, mode, and a few buttons.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

enum class TopBarButton { None, CloseEditor, SavePrefab, ProjectHub, SaveProject, BuildProject };

// Logo, title, mode and buttons, on the bar's frame.
void DrawTopBar(const EditorLayout& layout);

// The button that is shown under a point.
TopBarButton TopBarButtonAt(Point point, const EditorLayout& layout);
