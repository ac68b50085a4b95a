// One object's mesh in the viewport.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "state/mesh.h"
#include "state/texture_image.h"

// What a mesh is drawn with. The first three stay the same for a whole frame.
struct MeshDraw {
    Vec3 eye{};                             // world space
    Vec3 light{};                           // unit vector toward the light, or zero
    Matrix4 viewProjection{};               // world to clip space
    Matrix4 world{};                        // object to world space
    bool selected = false;                  // with an outline over everything
    uint32_t tint = 0;                      // 0x00BBGGRR; 0 for none
    float roughness = 0.72f;                // 0 .. 1
    float gloss = 0.18f;                    // 0 .. 1
    const TextureImage* texture = nullptr;  // null for the vertex colours
    bool repeat = false;                    // the texture is tiled, one tile per two world units
};

// Draws the faces that turn their front to the eye, then the outline. Depth decides what is seen. Every
// triangle index of the mesh must be valid.
void DrawMesh(const Mesh& mesh, const MeshDraw& draw);

// True when DrawMesh would draw a pixel of a frame buffer's `viewport` over something at `depth`, which then
// becomes the mesh's depth there. The outline does not count.
bool MeshDepthAt(const Mesh& mesh, const MeshDraw& draw, const Rect& viewport, Point pixel, float& depth);
