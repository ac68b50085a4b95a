// Every pixel that the program shows, and the primitives that write them. Nothing is blended: a primitive
// writes whole pixels.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "platform/canvas.h"
#include "render/raster/depth_tiles.h"
#include "render/raster/simd_level.h"

#include <cstdint>
#include <string>
#include <vector>

struct FrameBuffer {
    Pixel* pixels = nullptr;        // width x height, row 0 at the top; null: nothing may be drawn
    int32_t width = 0, height = 0;  // pixels
    std::vector<float> depth{};     // width x height; 1 is far, nothing drawn yet: see PrepareDepth
    DepthTiles depthTiles{};
    PixelOwners owners{};
    Rect viewport{};                   // what lines and 3D drawing are confined to; inside the buffer
    SimdLevel simd = BestSimdLevel();  // how triangles are filled
    bool keepsTexts = false;           // texts are drawn out of kept pixels where that changes nothing
    bool systemDrew = false;           // the system drew last: see PreparePixelAccess
};

extern FrameBuffer frameBuffer;

// The depth of a pixel that nothing was drawn to.
constexpr float kFarDepth = 1.0f;

// Makes the buffer `width` x `height`, with every depth far, unless it has that size. A side below 1 leaves
// the old buffer: a minimised window keeps its picture. False when there is nothing to draw into, for want of
// memory too; the next call tries again.
bool EnsureSize(int32_t width, int32_t height);

// Gives the buffer's memory back: the frame buffer is then as it was before its first size.
void ReleaseFrameBuffer();

// To be called before pixels are read or written directly: what the system drew before is then in them.
void PreparePixelAccess();

// Fills everything and makes every depth far.
void Clear(Pixel color);

// Fills left <= x < right, top <= y < bottom as far as it lies inside the buffer. Nothing for an empty
// rectangle.
void FillRect(const Rect& rect, Pixel color);

// Text with its top left corner at (x, y). `height` is the cell height in pixels, `weight` 400 or 600.
void DrawText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
              int32_t weight);

// An image scaled into the rectangle; its alpha is honoured. Nothing for a missing image.
void DrawImage(CanvasImage image, const Rect& rect);

// Copies the buffer to the window.
void Present();
