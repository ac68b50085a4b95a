// The screens that take the place of the Scene editor.
#pragma once

// Goes back to the Scene editor: a Blueprint with unsaved changes is saved, a prefab with unsaved changes is
// asked about. False when the user wants to stay there.
bool LeaveOtherScreens();
