// The pointer's gesture: beginning it and ending it without effect. What a gesture does is written where its
// subject is; app/mouse calls it.
#pragma once

#include "state/gesture.h"

// True while a button holds something. Nothing else may be grabbed then.
bool GestureIsUnderWay();

// Makes this the gesture under way and captures the mouse for it.
void StartGesture(const Gesture& gesture);

// Ends the gesture under way, if any, without effect and lets go of the mouse.
void DropGesture();

// Forgets everything that means an object by its index: gestures, the held keys' undo step, name and number
// entry, the object menu, and what the last frame drew. Called when objects change their indices or are
// replaced.
void ForgetObjectIndices();
