// What a file or an object becomes that is dropped on an object: a script, a texture, a prefab to collect or
// to spawn, an object to collect.
#pragma once

#include "state/asset_entry.h"

#include <cstdint>

// Each gives the object something, with an undo step and a message, and selects it first. False when it was
// refused; the message says why. `target` is the object under the pointer, -1 none.

// Adds the script's name, once. Any file but a script is refused.
bool AssignScript(const AssetEntry& file, int32_t target);

// Loads the image and puts it on the object, which gets a shape to show it on. Any file but an image is
// refused, and one that cannot be loaded.
bool AssignTexture(const AssetEntry& file, int32_t target);

// The prefab to collect of an object with CollectOnTouch, else to spawn of one with PlanePrefabSpawner. An
// object with neither becomes a collector. Without a message where the file is no prefab or no object is
// there: a prefab dropped anywhere else is placed in the scene.
bool AssignPrefab(const AssetEntry& file, int32_t target);

// Makes the selected object a collector of the object `dropped`, by its name. They must be two objects.
bool AssignObjectReference(int32_t dropped);
