// Where a whole mesh lies in the view, told from the box around its vertices.
#pragma once

#include "render/raster/mesh_to_draw.h"

#include <array>

// True when it is certain that no face of the mesh shows a pixel, because all of it lies behind the eye or
// beyond one side of the viewport, by at least an eighth of the viewport.
bool IsBesideView(const Mesh& mesh, const VertexTransform& transform);

// True when it is certain that no face of the mesh shows a pixel, because the mesh is beside the view, or
// every face is too small on the screen to be drawn.
bool IsInvisible(const Mesh& mesh, const VertexTransform& transform);

// What is certain about the corners that TransformVertices will compute, rounding included.
struct MeshPlace {
    bool isBeside = false;    // see IsBesideView
    bool isTooSmall = false;  // no face is large enough to be drawn
    bool isBounded = false;   // the rest is known
    Rect pixels{};            // of the viewport: the mesh shows nothing outside, and may be empty
    float nearest = 0;        // no corner has a depth before this; above 0
    float leastW = 0, mostW = 0;
    float edge = 0;   // no edge of a face is wider or higher, pixels
    float moved = 0;  // no corner is farther from its exact place, pixels
    Matrix4 toClip{};
    Vec4 sizes{};  // of the four clip coordinates, sums of what is added without its signs
};

MeshPlace PlaceMesh(const Mesh& mesh, const VertexTransform& transform);

// The part of the world that a pixel shows, between four planes that face outwards, two pixels off its
// centre.
struct PixelPlanes {
    std::array<Vec4, 4> planes{};
    std::array<Vec4, 4> sizes{};  // sums of what each plane was added from, without signs
};

PixelPlanes PlanesAround(Point pixel, const Rect& viewport, const Matrix4& viewProjection);

// True when it is certain that the mesh does not show the pixel, because a sphere around it lies beyond
// one of the planes. Always false for a mesh that was not measured.
bool MissesPixel(const Mesh& mesh, const Matrix4& world, const PixelPlanes& around);
