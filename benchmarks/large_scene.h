// The scenes that show how the editor bears many objects.
#pragma once

#include <cstdint>

// How the objects hang together.
enum class Tree { Roots, OneParent, Chains };

constexpr int32_t kLongChain = 50;  // objects of one of the chains

// Makes the editor's scene `objects` objects, small cubes and others side by side before the camera, with one
// in the middle selected.
void BuildLargeScene(Tree tree, int32_t objects);
