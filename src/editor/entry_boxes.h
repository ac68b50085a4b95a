// The boxes in which names and numbers are typed.
#pragma once

#include "editor/layout.h"

// The entry that is open, on a backdrop 12 pixels larger. Nothing when none is open.
void DrawEntryBoxes(const EditorLayout& layout);
