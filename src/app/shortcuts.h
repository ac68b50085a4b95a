// The keys that run commands.
#pragma once

#include <cstdint>

// A key press that no text entry has taken. Ctrl and Shift are read as they are now.
void handleKeyDown(uint32_t key);
