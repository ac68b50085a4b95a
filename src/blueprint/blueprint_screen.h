// The Blueprint screen: its picture, with canvas, links, nodes, top bar, palette, details and menu, and what
// the mouse does there.
#pragma once

#include "base/rect.h"
#include "blueprint/blueprint_layout.h"
#include "state/gesture.h"

// Draws the whole frame from the state.
void DrawBlueprintScreen(const BlueprintLayout& layout);

// The left button: the two buttons of the top bar, then the menu while it is open, then the nodes.
void PressBlueprint(Point pointer, const BlueprintLayout& layout);

// Moves the node that is held.
void DragBlueprintNode(const BlueprintDrag& drag, Point pointer, const BlueprintLayout& layout);

// The left button came up without a node: saves any changes, such as a node added from the menu.
void ReleaseBlueprint();

// The right button: opens the Add Node menu on the canvas, and closes it elsewhere.
void PressRightInBlueprint(Point pointer, const BlueprintLayout& layout);
