// What the name entry and the number entry have in common.
#pragma once

// Closes both entries, every pop-up menu and the Add Component search: only one of them takes the keyboard.
void CloseEntriesAndMenus();
