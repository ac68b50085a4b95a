// What the mouse does on the Blueprint screen.
#pragma once

#include "base/rect.h"
#include "blueprint/blueprint_layout.h"
#include "state/gesture.h"

// The left button: the two buttons of the top bar, then the menu while it is open, then the nodes.
void PressBlueprint(Point pointer, const BlueprintLayout& layout);

// The Add Node menu, while it is open.
void DrawAddNodeMenu(const BlueprintLayout& layout);

// Takes a held node along.
void DragBlueprintNode(const BlueprintDrag& drag, Point pointer, const BlueprintLayout& layout);

// The left button came up without a node: saves what has changed, a node from the menu, say.
void ReleaseBlueprint();

// The right button: opens the Add Node menu on the canvas, and closes it elsewhere.
void PressRightInBlueprint(Point pointer, const BlueprintLayout& layout);
