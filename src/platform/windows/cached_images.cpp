#include "platform/windows/cached_images.h"

#include "platform/windows/canvas_device.h"

#include <algorithm>
#include <utility>

constexpr uint32_t kColorBits = 0xFFFFFF;  // the system leaves anything in a pixel's fourth byte
constexpr size_t kMostPixels = 500'000;    // 4 MB: each is cached as it was and as it became

static ImagePlace PlaceOf(CanvasImage image, const Rect& rect) {
    return {image, rect.left, rect.top, rect.right, rect.bottom};
}

static bool IsInside(const Rect& rect, const CanvasPixels& canvas) {
    return canvas.first && rect.left >= 0 && rect.top >= 0 && rect.right <= canvas.width &&
           rect.bottom <= canvas.height && Width(rect) > 0 && Height(rect) > 0;
}

static Pixel* RowAt(const CanvasPixels& canvas, const Rect& rect, int32_t row) {
    return canvas.first + ptrdiff_t{rect.top + row} * canvas.width + rect.left;
}

static bool SameColors(const Pixel* a, const Pixel* b, int32_t count) {
    uint32_t difference = 0;
    for (int32_t i = 0; i < count; ++i)
        difference |= static_cast<uint32_t>(a[i]) ^ static_cast<uint32_t>(b[i]);
    return (difference & kColorBits) == 0;
}

static bool LiesOn(const std::vector<Pixel>& pixels, const CanvasPixels& canvas, const Rect& rect) {
    const int32_t width = Width(rect);
    for (int32_t y = 0; y < Height(rect); ++y) {
        if (!SameColors(pixels.data() + ptrdiff_t{y} * width, RowAt(canvas, rect, y), width)) return false;
    }
    return true;
}

static std::vector<Pixel> Cut(const CanvasPixels& canvas, const Rect& rect) {
    std::vector<Pixel> pixels;
    for (int32_t y = 0; y < Height(rect); ++y) {
        const Pixel* row = RowAt(canvas, rect, y);
        pixels.insert(pixels.end(), row, row + Width(rect));
    }
    return pixels;
}

bool DrawCachedImage(CanvasImage image, const Rect& rect) {
    const auto& cached = windowCanvas.cachedImages.images;
    const auto found = cached.find(PlaceOf(image, rect));
    const CanvasPixels canvas = windowCanvas.pixels;
    if (found == cached.end() || !IsInside(rect, canvas)) return false;
    FlushCanvas();
    if (!LiesOn(found->second.before, canvas, rect)) return false;
    const int32_t width = Width(rect);
    for (int32_t y = 0; y < Height(rect); ++y) {
        std::copy_n(found->second.after.data() + ptrdiff_t{y} * width, width, RowAt(canvas, rect, y));
    }
    return true;
}

static size_t PixelsOf(const Rect& rect) {
    return static_cast<size_t>(Width(rect)) * static_cast<size_t>(Height(rect));
}

// A full cache is emptied whole: what is shown comes back with the next frame.
static void Add(CanvasImage image, const Rect& rect, CachedImage&& made) {
    CachedImages& cached = windowCanvas.cachedImages;
    const bool isNew = !cached.images.contains(PlaceOf(image, rect));
    if (isNew && cached.pixels + PixelsOf(rect) > kMostPixels) cached = {};
    if (cached.images.insert_or_assign(PlaceOf(image, rect), std::move(made)).second)
        cached.pixels += PixelsOf(rect);
}

void CacheImage(CanvasImage image, const Rect& rect, bool (*draw)(CanvasImage, const Rect&)) {
    const CanvasPixels canvas = windowCanvas.pixels;
    if (!IsInside(rect, canvas) || PixelsOf(rect) > kMostPixels) {
        draw(image, rect);
        return;
    }
    FlushCanvas();
    std::vector<Pixel> before = Cut(canvas, rect);
    if (!draw(image, rect)) return;
    FlushCanvas();
    Add(image, rect, {std::move(before), Cut(canvas, rect)});
}
