// The inner loops of the rasterizer: one row of one triangle.
#pragma once

#include "render/color.h"
#include "render/cpu_features.h"
#include "render/projection.h"
#include "render/texture_image.h"

#include <array>
#include <cstdint>

// A triangle as a row needs it. Edge i lies opposite corner i, and its function divided by `area` is the
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

// A run of a row that may be drawn to.
struct RowSpan {
    int32_t y = 0;
    int32_t left = 0, right = 0;  // the pixels to look at, right exclusive
    Pixel* pixels = nullptr;      // of the row's first pixel
    float* depth = nullptr;
    // Pixels from the row's first to the buffer's end: whole vectors are stored as far as they lie before it.
    // What lies beyond `right` is stored back as it was.
    int32_t available = 0;
};

// The triangle's edge functions and weights for three screen corners. False when it has no area (below
// 0.0001).
bool SetUpTriangle(const std::array<ScreenCorner, 3>& corners, TriangleSetup& setup);

// Each function fills the pixels of the span whose centres lie inside the triangle, edges included, and
// nearer than what the depth buffer holds. The scalar ones are the definition.
using FillRowFlat = void (*)(const TriangleSetup&, const RowSpan&, Pixel color);
using FillRowTextured = void (*)(const TriangleSetup&, const RowSpan&, const TextureFill&);

struct RowFills {
    FillRowFlat flat = nullptr;
    FillRowTextured textured = nullptr;
};

// The functions of a level. SimdLevel::Avx2 only on a processor that has it.
const RowFills& RowFillsOf(SimdLevel level);
