// The inner loops of the rasterizer: the rows of one triangle.
#pragma once

#include "render/color.h"
#include "render/cpu_features.h"
#include "render/projection.h"
#include "render/rect.h"
#include "render/texture_image.h"

#include <array>
#include <cstdint>

// A triangle as its rows need it. Edge i lies opposite corner i, and its function divided by `area` is the
// weight of that corner.
struct TriangleSetup {
    std::array<float, 3> startX{}, startY{};  // where edge i begins, pixels
    std::array<float, 3> runX{}, runY{};      // its end minus its beginning
    float area = 0;                           // twice the signed area, square pixels; never 0
    std::array<float, 3> depth{};             // by corner
    std::array<float, 3> inverseW{};
    std::array<float, 3> u{}, v{};
};

// What colours a textured triangle.
struct TextureFill {
    const TextureImage* texture = nullptr;  // may be empty: then white
    bool repeat = false;
    uint32_t tint = 0;     // 0x00BBGGRR, 0 for none
    float brightness = 1;  // limited when it is applied
};

// Where the edges of a triangle cross the rows.
struct ColumnBounds {
    std::array<double, 3> startX{}, startY{};  // where edge i begins, pixels
    std::array<double, 3> slope{};             // columns per row
    std::array<int32_t, 3> side{};  // 1: covered pixels lie right of the edge, -1: left, 0: any side
};

// The pixels that a triangle may cover, and what they are drawn to.
struct FillArea {
    Rect box{};              // inside the buffer
    bool isBounded = false;  // by its edges too; else every column of the box is looked at
    ColumnBounds bounds{};
    Pixel* pixels = nullptr;  // of the buffer's first pixel
    float* depth = nullptr;
    int32_t width = 0;  // of the buffer: pixels from one row to the next
    // Pixels of the buffer. Whole vectors are stored as far as they lie before its end: what they hold beyond
    // the triangle is stored back as it was.
    int64_t size = 0;
};

// The triangle's edge functions and weights for three screen corners. False when it has no area (below
// 0.0001).
bool SetUpTriangle(const std::array<ScreenCorner, 3>& corners, TriangleSetup& setup);

ColumnBounds BoundColumns(const TriangleSetup& setup);

// The columns of a row that the triangle may cover, within left .. right (exclusive): at least every covered
// pixel, and little more. Empty when none can be.
struct ColumnRange {
    int32_t left = 0, right = 0;
};
ColumnRange CoveredColumns(const ColumnBounds& bounds, int32_t y, ColumnRange within);

// True where the triangle covers the pixel's centre, edges included, and lies strictly before `depth`, which
// then becomes the triangle's depth there.
bool CoversPixel(const TriangleSetup& setup, Point pixel, float& depth);

// Each function fills the pixels of the area whose centres lie inside the triangle, edges included, and
// nearer than what the depth buffer holds. The scalar ones are the definition.
using FillRowsFlat = void (*)(const TriangleSetup&, const FillArea&, Pixel color);
using FillRowsTextured = void (*)(const TriangleSetup&, const FillArea&, const TextureFill&);

struct RowFills {
    FillRowsFlat flat = nullptr;
    FillRowsTextured textured = nullptr;
};

// The functions of a level. SimdLevel::Avx2 only on a processor that has it.
const RowFills& RowFillsOf(SimdLevel level);
