// The boxes in which names and numbers are typed.
#pragma once

#include "editor/layout.h"

// The entry that is open, alone on a backdrop that covers everything. Nothing when none is open.
void DrawEntryBoxes(const EditorLayout& layout);
