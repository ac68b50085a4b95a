// Where a whole mesh lies in the view, told from the sphere and from the box around its vertices.
#pragma once

#include "render/raster/mesh_to_draw.h"

#include <array>

// A plane that faces outwards, and what tells how far a sphere lies beyond it.
struct OutwardPlane {
    Vec4 plane{};
    Vec4 sizes{};      // sums of what it was added from, without signs
    float length = 0;  // at least that of its direction, and not 0
};

// What a picture shows of the world. Made once for all meshes.
struct Frustum {
    Rect viewport{};
    Matrix4 viewProjection{};
    std::array<OutwardPlane, 5> planes{};  // behind the eye, and an eighth of the viewport beyond each side
    float pixelsPerUnit = 0;               // of the world, across, where w is 1; 0 if nothing is told
};

Frustum FrustumOf(const Matrix4& viewProjection, const Rect& viewport);

// True when it is certain that no face of the mesh shows a pixel, because a sphere around the mesh lies
// behind the eye or beyond one side of the viewport, by at least an eighth of the viewport, or because every
// face is too small on the screen to be drawn. Always false for a mesh that was not measured.
bool IsInvisible(const Mesh& mesh, const Matrix4& world, const Frustum& frustum);

// What is certain about the corners that TransformVertices will compute, rounding included.
struct MeshPlace {
    // All of it lies behind the eye, or beyond one side of the viewport by at least an eighth of the
    // viewport: no face shows a pixel.
    bool isBeside = false;
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

// The part of the world that a pixel shows: between four planes, two pixels off its centre.
using PixelPlanes = std::array<OutwardPlane, 4>;

PixelPlanes PlanesAround(Point pixel, const Rect& viewport, const Matrix4& viewProjection);

// True when it is certain that the mesh does not show the pixel, because a sphere around it lies beyond
// one of the planes. Always false for a mesh that was not measured.
bool MissesPixel(const Mesh& mesh, const Matrix4& world, const PixelPlanes& around);
