// A frame buffer to draw into and to look at.
#pragma once

#include "platform/headless/headless.h"
#include "render/frame_buffer.h"

#include <cstdint>

// Starts from an empty headless platform and a buffer of one colour, with the whole of it as viewport. Every
// depth is far.
inline void StartPicture(int32_t width, int32_t height, Pixel background = Pixel{0}) {
    headless = HeadlessPlatform{};
    ReleaseFrameBuffer();
    frameBuffer.simd = BestSimdLevel();
    EnsureSize(width, height);
    Clear(background);
    PrepareDepth(frameBuffer.viewport, frameBuffer);
}

inline Pixel PixelAt(int32_t x, int32_t y) {
    return frameBuffer
        .pixels[static_cast<size_t>(y) * static_cast<size_t>(frameBuffer.width) + static_cast<size_t>(x)];
}

inline float DepthAt(int32_t x, int32_t y) {
    return frameBuffer
        .depth[static_cast<size_t>(y) * static_cast<size_t>(frameBuffer.width) + static_cast<size_t>(x)];
}

// How many pixels have a colour.
inline int32_t CountOf(Pixel color) {
    int32_t count = 0;
    for (int32_t y = 0; y < frameBuffer.height; ++y) {
        for (int32_t x = 0; x < frameBuffer.width; ++x) count += PixelAt(x, y) == color;
    }
    return count;
}
