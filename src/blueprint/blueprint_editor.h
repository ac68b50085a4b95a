// The open Blueprint: opening, saving, leaving, and what is done to its nodes.
#pragma once

#include "base/rect.h"
#include "blueprint/blueprint_layout.h"

#include <cstdint>
#include <string>

// Shows a Blueprint. A game stops first, and one that is open already is saved when it has unsaved changes.
// False when that fails: the first one then stays open. The Prefab editor must be closed.
bool OpenBlueprintEditor(const std::wstring& path);

// Writes the open Blueprint and says how that went.
bool SaveBlueprintEditor();

// Goes back to the Scene editor, after saving unsaved changes without a question. Where that fails it asks
// whether to leave without them; False when the Blueprint stays open. Nothing to do on another screen.
bool CloseBlueprintEditor();

// Saves unsaved changes of the open Blueprint. False when that fails; without any there is nothing to do.
bool SaveBlueprintChanges();

// Appends a node, which becomes the last of the chain, with an id above all others.
void AddBlueprintNode(const std::wstring& title, Point place);

// Moves a node to a place of the canvas. `index` is valid.
void MoveBlueprintNode(int32_t index, Point place);
