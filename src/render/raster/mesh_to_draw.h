// One mesh on its way to the picture: what the stages of drawing hand to one another.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "render/projection.h"
#include "render/raster/draw_mesh.h"
#include "state/mesh.h"

#include <cstddef>
#include <cstdint>

// Texture coordinates of a corner, v upwards.
struct TexturePoint {
    float u = 0, v = 0;
};

// The world scale along x, y and z.
struct AxisScales {
    float x = 1, y = 1, z = 1;
};

// A face that may show.
struct ScannedFace {
    uint32_t triangle = 0;  // index into the mesh's triangles
    Rect box{};         // the face covers nothing of the viewport outside it; not empty, inside the buffer
    float nearest = 0;  // no pixel of it lies before this depth
    // Edge functions at its pixels are zero or no smaller than 2^-69, and not all three zero: see Divisor.
    bool isOrdinary = false;
};

// Cosines of angles to a face's normal.
struct FaceLight {
    float eye = 0;  // not above 0: the face turns its back to the eye
    float light = 0;
    float halfway = 0;  // between light and eye
};

// What colours a face.
struct FaceInk {
    Pixel color{};             // of a flat face
    TexturePoint points[3]{};  // of a textured one, by corner
    float brightness = 1;      // of a textured one; limited when it is applied
};

// A texture as the fill samples it.
struct TextureSource {
    const Pixel* texels = nullptr;  // null: white
    int32_t width = 0, height = 0;  // pixels
    bool repeat = false;
    uint32_t tint = 0;  // 0x00BBGGRR, 0 for none
};

struct MeshToDraw;

// Finds the ink of a face by its place in the list. False: the face is not drawn.
using FindFaceInk = bool (*)(const MeshToDraw& mesh, size_t face, FaceInk& ink);

// Faces of one mesh, in the order of drawing. Drawing asks for the ink of a face when the first of its pixels
// has passed the depth test: most faces show none.
struct MeshToDraw {
    const MeshDraw* draw = nullptr;
    const MeshVertex* vertices = nullptr;     // of the mesh
    const MeshTriangle* triangles = nullptr;  // of the mesh
    const ScreenCorner* corners = nullptr;    // by vertex
    AxisScales scales{};
    bool isTextured = false;
    TextureSource texture{};  // of a textured mesh
    const ScannedFace* faces = nullptr;
    size_t faceCount = 0;
    const FaceLight* lights = nullptr;  // by face; null: each is found when it is needed
    FindFaceInk findInk = nullptr;
    const FaceInk* knownInk = nullptr;  // for a `findInk` that only hands it on
};
