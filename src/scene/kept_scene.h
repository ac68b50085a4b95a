// Putting the scene aside while a game plays it or a prefab is shown, and putting it back.
#pragma once

#include "state/editor_state.h"

#include <optional>

// A copy of the scene, of the undo history, and of where the user is. Nothing changes.
KeptScene KeepScene();

// Makes `kept` the open scene again and leaves it empty. `kept` holds a scene.
void PutSceneBack(std::optional<KeptScene>& kept);
