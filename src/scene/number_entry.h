// The box in which a number is typed: what its keys do.
#pragma once

#include "state/interaction.h"

// Opens the box for one number of an object, with two decimals of what there is; any other entry or menu
// closes. `object` is valid; `component` is 0 x, 1 y, 2 z, or -1 for the text size.
void StartNumberEntry(int32_t object, NumberEntry::Field field, int32_t component);

// What follows is for an open box. Digits, signs, points and commas are taken, a comma as a point, up to 32
// characters; a longer number that the box was opened with stays whole.
void TypeIntoNumberEntry(wchar_t character);
void EraseInNumberEntry();
void CancelNumberEntry();

// Stores the number that the typed text begins with and closes the box. A text that begins with none, or with
// one too large for a float, leaves the box open; an object that is gone closes it.
void CommitNumberEntry();
