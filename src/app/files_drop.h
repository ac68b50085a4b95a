// A file of the project that is dragged out of the Files page and let go.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/gesture.h"

// An item that was dragged becomes what its kind is for: a model or a prefab is placed in the scene, a script
// or an image goes to the object it was let go over. Nothing for one that was only pressed.
void ReleaseFilesItem(const FilesDrag& drag, Point pointer, const EditorLayout& layout);
