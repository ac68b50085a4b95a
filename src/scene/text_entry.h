// Closing what lies over the panels: pop-up menus and entry boxes.
#pragma once

bool MenuIsOpen();

// Closes every pop-up menu.
void CloseMenus();

// Closes both entries, every pop-up menu and the Add Component search: only one of them takes the keyboard.
void CloseEntriesAndMenus();
