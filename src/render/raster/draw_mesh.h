// One object's mesh in the viewport.
#pragma once

#include "render/raster/surface.h"

// Draws the faces that turn their front to the eye, then the outline of a selected mesh. Depth decides
// what is visible. Every triangle index of the mesh must be valid.
void DrawMesh(const Mesh& mesh, const MeshDraw& draw, Surface& surface);

// A pixel to ask about, and the nearest depth found there so far.
struct PickedPixel {
    Rect viewport{};
    Point pixel{};
    float depth = kFarDepth;
};

// True when DrawMesh would draw the pixel over something at the depth found so far, which the mesh's depth
// then replaces. The outline does not count. Draws nothing; the surface only lends its scratch memory.
bool MeshCoversPixel(const Mesh& mesh, const MeshDraw& draw, PickedPixel& picked, Surface& surface);
