#include "render/frame_buffer.h"

#include "base/enough_memory.h"
#include "render/raster/kernels.h"

#include <algorithm>
#include <cstddef>

FrameBuffer frameBuffer;

// Takes the memory for all depths at once, so that no later frame can run out of memory half way.
static bool MakeDepth() {
    FrameBuffer& fb = frameBuffer;
    fb.depth.assign(static_cast<size_t>(fb.width) * static_cast<size_t>(fb.height), kFarDepth);
    ClearDepth(fb.viewport, fb);
    return true;
}

// The pixels belong to the platform and the depths to this program, so both are replaced together. While
// this fails, `pixels` stays null and every primitive draws nothing, which keeps the program running in a
// window that is too large for the memory.
bool EnsureSize(int32_t width, int32_t height) {
    FrameBuffer& fb = frameBuffer;
    const bool isUsable = width >= 1 && height >= 1;
    if (isUsable && (width != fb.width || height != fb.height || fb.pixels == nullptr)) {
        fb.pixels = nullptr;
        fb.width = width;
        fb.height = height;
        fb.viewport = {0, 0, width, height};
        fb.systemDrew = false;
        if (WithEnoughMemory(MakeDepth)) fb.pixels = CreateCanvas(width, height);
    }
    return fb.pixels != nullptr;
}

void ReleaseFrameBuffer() {
    DestroyCanvas();
    frameBuffer = FrameBuffer{};
}

void Clear(Pixel color) {
    FillRect({0, 0, frameBuffer.width, frameBuffer.height}, color);
    ClearDepth({0, 0, frameBuffer.width, frameBuffer.height}, frameBuffer);
}

void FillRect(const Rect& rect, Pixel color) {
    if (frameBuffer.pixels == nullptr) return;
    const int32_t left = std::clamp(rect.left, 0, frameBuffer.width);
    const int32_t right = std::clamp(rect.right, 0, frameBuffer.width);
    const int32_t top = std::clamp(rect.top, 0, frameBuffer.height);
    const int32_t bottom = std::clamp(rect.bottom, 0, frameBuffer.height);
    if (left >= right || top >= bottom) return;

    PreparePixelAccess(frameBuffer);
    Pixel* first = frameBuffer.pixels + static_cast<ptrdiff_t>(top) * frameBuffer.width + left;
    KernelsOf(frameBuffer.simd)
        .clearBlock(first, frameBuffer.width, right - left, bottom - top, static_cast<uint32_t>(color));
}

void DrawPanelBox(const Rect& rect, Pixel fill, Pixel light) {
    const auto [left, top, right, bottom] = rect;
    FillRect(rect, fill);
    FillRect({left, top, right, top + 1}, light);
    FillRect({left, top + 1, right, top + 2}, kBoxSecondLine);
    FillRect({left, bottom - 1, right, bottom}, kBoxDarkEdge);
    FillRect({left, top, left + 1, bottom}, light);
    FillRect({right - 1, top, right, bottom}, kBoxDarkEdge);
}

// The system draws text and images straight into the pixels, and may finish later. The flag makes
// PreparePixelAccess wait for it before the program touches pixels itself, and only then.
void DrawText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
              int32_t weight) {
    if (frameBuffer.pixels == nullptr) return;
    const TextStyle style{color, height, weight};
    if (frameBuffer.cachesTexts && DrawCachedText({x, y}, text, style, frameBuffer.texts, frameBuffer))
        return;
    DrawCanvasText(x, y, text, color, height, weight);
    frameBuffer.systemDrew = true;
}

void DrawImage(CanvasImage image, const Rect& rect) {
    if (frameBuffer.pixels == nullptr || image < 0) return;
    DrawCanvasImage(image, rect);
    frameBuffer.systemDrew = true;
}

void Present() {
    if (frameBuffer.pixels == nullptr) return;
    PresentCanvas();
}
