// One object's mesh in the viewport.
#pragma once

#include "render/raster/surface.h"

// Draws the faces that turn their front to the eye, then the outline. Depth decides what is visible. Every
// triangle index of the mesh must be valid.
void DrawMesh(const Mesh& mesh, const MeshDraw& draw, Surface& surface);

// The same for a mesh of which the caller has asked whether it is invisible: see IsInvisible.
void DrawMeshInView(const Mesh& mesh, const MeshDraw& draw, Surface& surface);

// A pixel that is asked about, and the nearest depth that was found there so far.
struct PickedPixel {
    Rect viewport{};
    Point pixel{};
    float depth = kFarDepth;
};

// True when DrawMesh would draw that pixel over something at the depth found so far; the mesh's depth there
// takes its place. The outline does not count. Nothing is drawn: the surface lends its memory.
bool MeshCoversPixel(const Mesh& mesh, const MeshDraw& draw, PickedPixel& picked, Surface& surface);
