#include "project/other_screens.h"

#include "blueprint/blueprint_editor.h"
#include "project/prefab_editor.h"

bool LeaveOtherScreens() { return CloseBlueprintEditor() && ClosePrefabEditor(); }
