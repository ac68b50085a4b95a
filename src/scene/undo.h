// The undo history: the scenes before each of the last 64 changes.
#pragma once

#include "state/editor_state.h"

#include <functional>
#include <vector>

// Called by every command once, before it changes the scene. The label names the command, and is a literal.
// Nothing is kept in the game runtime, or of an empty scene.
void pushUndo(const char* label);

// Gives the objects a version that no other objects have had. For what only shows in the editor and is stored
// in the scene, like an Inspector fold: no reason to save a prefab.
void RaiseSceneVersion();

// The objects have changed: a new version, and a prefab to be saved. For changes that go on after their
// pushUndo, like drags.
void MarkChanged();

// True while the objects have another version than was last loaded or saved: costs nothing, whatever the
// scene. Objects that were changed and changed back by hand count as changed; see SceneIsSaved for the exact
// answer.
bool SceneHasChanges();

// Brings back the scene and the selection before the last change.
void undo();

void ClearUndo();

// Changes the objects of every step of a history. `change` is called once for each object and returns whether
// it changed it; parent indices must stay.
void ChangeHistory(std::vector<UndoStep>& history, const std::function<bool(GameObject&)>& change);
