// The commands on objects: add, duplicate, delete, move in the Hierarchy. Each is one undo step, selects its
// result and reports one message.
#pragma once

#include <cstdint>
#include <string>

// Named after the number of objects that there were. A cube and an entity stand in a row along z, the others
// before the editor's camera.
void addCube();
void addEntity();
void addCamera();
void addLight();
void addPlane();
void addText();

// A small cube beside the parent. A cube as by addCube when `parent` names no object.
void addChild(int32_t parent);

// An object that shows a model of the mesh library: beside `parent`, or before the camera when `parent` names
// no object.
void addModelObject(int32_t meshIndex, const std::wstring& name, int32_t parent = -1);

void duplicateSelected();

// Deletes the selected object and all below it. The first two objects of a scene are protected, those of a
// prefab are not.
void deleteSelected();

// Puts `dragged` under `target`, or beside it with the same parent; in the list right behind `target` when
// `dropAsChild` or `dropAfter`, else right before it. Its place in the world stays, its rotation and scale
// stay as numbers. Nothing happens without two different objects, or when `target` is below `dragged`.
void moveInHierarchy(int32_t dragged, int32_t target, bool dropAsChild, bool dropAfter);
