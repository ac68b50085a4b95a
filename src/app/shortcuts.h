// The keys that run commands.
#pragma once

#include <cstdint>

// True while Ctrl is held without Alt. The system reports AltGr as both, and a key with it types a character.
bool IsCommandKeyHeld();

// A key press that no text entry has taken. Ctrl, Alt and Shift are read as they are now.
void handleKeyDown(uint32_t key);
