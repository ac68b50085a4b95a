// What must be true of the editor, whatever was done to it.
#pragma once

#include <cstddef>

// What is wrong with the editor's state; null when nothing is. `longestName` is 80, or as much as the open
// entry began with.
const char* FaultInEditor(size_t longestName);
