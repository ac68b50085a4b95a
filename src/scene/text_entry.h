// Closing what lies over the panels: pop-up menus and entry boxes.
#pragma once

#include "state/interaction.h"

// True while any pop-up menu, or the one of this kind, is open.
bool MenuIsOpen();
bool MenuIsOpen(MenuKind kind);

// Closes the pop-up menu that is open, if any.
void CloseMenu();

// Closes both entries, the pop-up menu and the Add Component search: only one of them takes the keyboard.
void CloseEntriesAndMenu();
