// Whether a picture that was drawn only where it differs from the one before is the picture drawn whole.
#pragma once

#include "app/frame.h"
#include "platform/headless/headless.h"
#include "render/frame_buffer.h"

#include <algorithm>
#include <string>
#include <vector>

// From here on pictures are drawn as the program draws them, and texts leave marks.
inline void CachePictures() {
    frameBuffer.cachesPicture = true;
    frameBuffer.cachesTexts = true;
    headless.paintsTexts = true;
    headless.hasWindowPixels = true;
}

// The picture of now, drawn whole, at once and over other pixels. Whatever is cached is as before
// afterwards.
inline std::vector<Pixel> PictureDrawnWhole() {
    const CachedPicture kept = frameBuffer.picture;
    const TextRunCache texts = frameBuffer.texts;
    const std::vector<Pixel> shown = headless.pixels, window = headless.windowPixels;
    frameBuffer.cachesPicture = false;
    frameBuffer.texts = {};
    std::ranges::fill(headless.pixels, Pixel{0xABCDEF});
    RenderFrame();
    std::vector<Pixel> whole = headless.pixels;
    std::ranges::copy(shown, headless.pixels.begin());  // in place: the frame buffer points to them
    headless.windowPixels = window;
    frameBuffer.cachesPicture = true;
    frameBuffer.picture = kept;
    frameBuffer.texts = texts;
    return whole;
}

// Empty when the window shows what it would show had the last picture been drawn whole.
inline std::string FaultInCachedPicture() {
    const std::vector<Pixel> whole = PictureDrawnWhole();
    if (headless.pixels != whole) return "the canvas differs";
    if (headless.windowPixels != whole) return "the window differs";
    return "";
}
