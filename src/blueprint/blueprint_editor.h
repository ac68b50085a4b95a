// The open Blueprint: opening, saving and leaving it, and changing its nodes.
#pragma once

#include "base/rect.h"
#include "blueprint/blueprint_layout.h"

#include <cstdint>
#include <string>

// Shows a Blueprint. A Blueprint that is already open is saved first if it has unsaved changes; false when
// that fails, and it stays open. A game stops. The Prefab editor must be closed.
bool OpenBlueprintEditor(const std::wstring& path);

// Writes the open Blueprint and says how that went.
bool SaveBlueprintEditor();

// Goes back to the Scene editor and saves unsaved changes without asking. If that fails, asks whether to
// leave without them; false when the Blueprint stays open. Does nothing on another screen.
bool CloseBlueprintEditor();

// Saves the open Blueprint if it has unsaved changes. False when that fails.
bool SaveBlueprintChanges();

// Appends a node, which becomes the last of the chain, with an id above all others.
void AddBlueprintNode(const std::wstring& title, Point place);

// Moves a node to a place of the canvas. `index` is valid.
void MoveBlueprintNode(int32_t index, Point place);
