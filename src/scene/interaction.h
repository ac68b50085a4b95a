// What the user is in the middle of: held keys, the pointer's gesture, the open menu and the open entry. Here
// they begin and end without effect; what they do is written where their subjects are.
#pragma once

#include "state/gesture.h"
#include "state/interaction.h"

#include <cstdint>

// True while the key of this virtual-key code is down.
bool KeyIsDown(uint32_t key);

// +1 for the first key, -1 for the second, 0 for both or none.
float KeyAxis(uint32_t positive, uint32_t negative);

// True while a button holds something. Nothing else may be grabbed then.
bool GestureIsUnderWay();

// Makes this the gesture under way and captures the mouse for it.
void StartGesture(const Gesture& gesture);

// Ends the gesture under way, if any, without effect and lets go of the mouse.
void DropGesture();

// True while any pop-up menu, or the one of this kind, is open.
bool MenuIsOpen();
bool MenuIsOpen(MenuKind kind);

// Closes the pop-up menu that is open, if any.
void CloseMenu();

// Closes both entries, the pop-up menu and the Add Component search: only one of them takes the keyboard.
void CloseEntriesAndMenu();

// Forgets everything that means an object by its index: gestures, the held keys' undo step, name and number
// entry, the object menu, and what the last frame drew. Called when objects change their indices or are
// replaced.
void ForgetObjectIndices();
