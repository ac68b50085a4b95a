// Where everything lies in the window at its current size.
#pragma once

#include "blueprint/blueprint_layout.h"
#include "editor/layout.h"
#include "project/hub_screen.h"

// The regions of the editor, with the panel sizes fitted to the window. The viewport is the whole client area
// in the game.
EditorLayout CurrentLayout();

HubLayout CurrentHubLayout();
BlueprintLayout CurrentBlueprintLayout();
