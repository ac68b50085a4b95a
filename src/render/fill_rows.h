// The inner loops of the rasterizer: the rows of one triangle.
#pragma once

#include "render/color.h"
#include "render/cpu_features.h"
#include "render/mesh.h"
#include "render/projection.h"
#include "render/rect.h"
#include "render/simd.h"
#include "render/texture_image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>

// A triangle as its rows need it. Edge i lies opposite corner i, and its function divided by `area` is the
// weight of that corner.
struct TriangleSetup {
    std::array<float, 3> startX{}, startY{};  // where edge i begins, pixels
    std::array<float, 3> runX{}, runY{};      // its end minus its beginning
    float area = 0;                           // twice the signed area, square pixels; never 0
    std::array<float, 3> depth{};             // by corner
    std::array<float, 3> inverseW{};
};

// Texture coordinates of a corner.
struct TexturePoint {
    float u = 0, v = 0;
};

// How a texture colours.
struct TextureFill {
    const TextureImage* texture = nullptr;  // never null; without texels it shows as white
    bool repeat = false;
    uint32_t tint = 0;     // 0x00BBGGRR, 0 for none
    float brightness = 1;  // limited when it is applied
};

struct TexturedFace {
    std::array<TexturePoint, 3> points{};  // by corner
    TextureFill fill{};
};

// What colours a flat triangle: asked for when its first pixel is found, for many triangles show none.
struct FlatFill {
    // False: nothing is drawn.
    bool (*colorOf)(const void* source, uint32_t number, Pixel& color) = nullptr;
    const void* source = nullptr;
    uint32_t number = 0;  // of the triangle among those of the source
};

// What colours a textured triangle, asked for in the same way.
struct TexturedFill {
    // False: nothing is drawn.
    bool (*faceOf)(const void* source, uint32_t number, TexturedFace& face) = nullptr;
    const void* source = nullptr;
    uint32_t number = 0;
};

// Where the edges of a triangle cross the rows.
struct ColumnBounds {
    std::array<double, 3> startX{}, startY{};  // where edge i begins, pixels
    std::array<double, 3> slope{};             // columns per row
    std::array<int32_t, 3> side{};  // 1: covered pixels lie right of the edge, -1: left, 0: any side
};

// What is drawn to.
struct FillTarget {
    Pixel* pixels = nullptr;  // of the buffer's first pixel
    float* depth = nullptr;
    int32_t width = 0;  // of the buffer: pixels from one row to the next
    // Pixels of the buffer. Whole vectors are stored as far as they lie before its end: what they hold beyond
    // the triangle is stored back as it was.
    int64_t size = 0;
    // Where objects are drawn in another order than the scene's: the index of the object that every pixel
    // shows. Of two at the same depth the first in the scene is seen. Null: the first one drawn is.
    int32_t* owners = nullptr;
    int32_t owner = 0;  // the index of the object at hand
};

// The pixels that a triangle may cover.
struct FillArea {
    Rect box{};              // inside the buffer
    bool isBounded = false;  // by its edges too; else every column of the box is looked at
    ColumnBounds bounds{};
    FillTarget target{};
};

// Twice the area below which a triangle is not drawn, square pixels.
constexpr float kSmallestArea = 0.0001f;

// The triangle's edge functions and weights for three screen corners. False when it has no area.
bool SetUpTriangle(const std::array<ScreenCorner, 3>& corners, TriangleSetup& setup);

ColumnBounds BoundColumns(const TriangleSetup& setup);

struct ColumnRange {
    int32_t left = 0, right = 0;  // right exclusive
};

// The columns of a row that the triangle may cover, as far as they lie `within`: at least every covered
// pixel, and little more. Empty when none can be.
ZEL_INLINE ColumnRange CoveredColumns(const ColumnBounds& bounds, int32_t y, ColumnRange within) {
    // Columns: more than rounding can move a crossing. The edge function's two products are rounded by 2^-24
    // of at most 2e5 columns each.
    constexpr double kSlack = 1.0;
    double left = within.left, right = within.right;
    for (size_t i = 0; i < 3; ++i) {
        const double crossing = bounds.startX[i] + (y + 0.5 - bounds.startY[i]) * bounds.slope[i] - 0.5;
        if (bounds.side[i] > 0) left = std::max(left, crossing - kSlack);
        if (bounds.side[i] < 0) right = std::min(right, crossing + kSlack + 1);
    }
    if (!(left < right)) return {};
    return {static_cast<int32_t>(left), static_cast<int32_t>(std::ceil(right))};
}

// True where the triangle covers the pixel's centre, edges included, and lies strictly before `depth`, which
// then becomes the triangle's depth there.
bool CoversPixel(const TriangleSetup& setup, Point pixel, float& depth);

// Where a triangle with an area lies on the screen.
struct PlacedTriangle {
    const std::array<ScreenCorner, 3>& corners;
    const Rect& box;  // it covers nothing of what may be drawn to outside it; not empty, inside the buffer
    float nearest;    // no pixel of it lies before this depth
};

// Each function fills the pixels of the box whose centres lie inside the triangle, edges included, and nearer
// than what the depth buffer holds. The scalar ones are the definition.
using FillFlatTriangle = void (*)(const PlacedTriangle&, const FillTarget&, const FlatFill&);
using FillTexturedTriangle = void (*)(const PlacedTriangle&, const FillTarget&, const TexturedFill&);

// A triangle of a mesh that may show.
struct ScannedFace {
    uint32_t triangle = 0;  // index into the mesh's triangles
    Rect box{};             // see PlacedTriangle
    float nearest = 0;      // the same
};

// Triangles of one mesh, in the order of drawing. Each is asked for by its place in the list.
struct MeshFaces {
    std::span<const ScannedFace> faces{};
    const MeshTriangle* triangles = nullptr;  // of the mesh
    const ScreenCorner* corners = nullptr;    // by vertex
};
using FillFlatFaces = void (*)(const MeshFaces&, const FillTarget&, FlatFill);

struct RowFills {
    FillFlatTriangle flat = nullptr;
    FillFlatFaces flatFaces = nullptr;
    FillTexturedTriangle textured = nullptr;
};

// The functions of a level. SimdLevel::Avx2 only on a processor that has it.
const RowFills& RowFillsOf(SimdLevel level);
