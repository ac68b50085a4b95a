// What the mouse does on the Blueprint screen.
#pragma once

#include "base/rect.h"
#include "blueprint/blueprint_layout.h"

// The left button: the two buttons of the top bar, then the menu while it is open, then the nodes.
void PressBlueprint(Point pointer, const BlueprintLayout& layout);

// Takes a held node along.
void MoveInBlueprint(Point pointer, const BlueprintLayout& layout);

// Lets go of a held node. Saves when one was held, moved or not, and when anything else has changed.
void ReleaseBlueprint();

// The right button: opens the Add Node menu on the canvas, and closes it elsewhere.
void PressRightInBlueprint(Point pointer, const BlueprintLayout& layout);
