#include "render/frame_buffer.h"

#include "base/enough_memory.h"
#include "render/raster/kernels.h"
#include "render/text_runs.h"

#include <algorithm>
#include <cstddef>

FrameBuffer frameBuffer;

// For the whole buffer, so that no part of it takes more memory later.
static bool MakeDepth() {
    FrameBuffer& fb = frameBuffer;
    fb.depth.assign(static_cast<size_t>(fb.width) * static_cast<size_t>(fb.height), kFarDepth);
    ClearDepth(fb.viewport);
    return true;
}

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
    ForgetKeptTexts();
    frameBuffer = FrameBuffer{};
}

void PreparePixelAccess() {
    if (!frameBuffer.systemDrew) return;
    FlushCanvas();
    frameBuffer.systemDrew = false;
}

void Clear(Pixel color) {
    FillRect({0, 0, frameBuffer.width, frameBuffer.height}, color);
    ClearDepth({0, 0, frameBuffer.width, frameBuffer.height});
}

void FillRect(const Rect& rect, Pixel color) {
    if (frameBuffer.pixels == nullptr) return;
    const int32_t left = std::clamp(rect.left, 0, frameBuffer.width);
    const int32_t right = std::clamp(rect.right, 0, frameBuffer.width);
    const int32_t top = std::clamp(rect.top, 0, frameBuffer.height);
    const int32_t bottom = std::clamp(rect.bottom, 0, frameBuffer.height);
    if (left >= right || top >= bottom) return;

    PreparePixelAccess();
    Pixel* first = frameBuffer.pixels + static_cast<ptrdiff_t>(top) * frameBuffer.width + left;
    KernelsOf(frameBuffer.simd)
        .clearBlock(first, frameBuffer.width, right - left, bottom - top, static_cast<uint32_t>(color));
}

void DrawText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
              int32_t weight) {
    if (frameBuffer.pixels == nullptr) return;
    if (frameBuffer.keepsTexts && DrawKeptText(x, y, text, color, height, weight)) return;
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
