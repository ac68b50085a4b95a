// The picture of the Blueprint screen: canvas with links and nodes, top bar, palette, details, menu.
#pragma once

#include "blueprint/blueprint_layout.h"

// Draws the whole frame from the state.
void DrawBlueprintScreen(const BlueprintLayout& layout);
