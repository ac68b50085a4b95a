// A file of the project that is dragged out of the Files page and let go.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

// Ends the press on the item. One that was dragged becomes what its kind is for: a model or a prefab is
// placed in the scene, a script or an image goes to the object it was let go over. Nothing without a pressed
// item.
void ReleaseFilesItem(Point pointer, const EditorLayout& layout);
