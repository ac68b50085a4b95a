#include "platform/canvas.h"
#include "platform/windows/cached_images.h"
#include "platform/windows/canvas_device.h"
#include "platform/windows/gdi_plus.h"
#include "platform/windows/window_icon.h"

#include <algorithm>
#include <cstddef>
#include <vector>

static std::vector<Gdiplus::GpImage*> images;  // indexed by CanvasImage

static CanvasImage Add(Gdiplus::GpImage* image) {
    images.push_back(image);
    return static_cast<CanvasImage>(images.size()) - 1;
}

// A bitmap with pixels of its own. Null when it cannot be made.
static Gdiplus::GpBitmap* BitmapOf(const GdiPlusCalls& gdiPlus, const DecodedImage& pixels) {
    Gdiplus::GpBitmap* bitmap = nullptr;
    const Gdiplus::Rect whole(0, 0, pixels.width, pixels.height);
    if (gdiPlus.GdipCreateBitmapFromScan0(whole.Width, whole.Height, 0, PixelFormat32bppARGB, nullptr,
                                          &bitmap) != Gdiplus::Ok) {
        return nullptr;
    }
    Gdiplus::BitmapData target{};
    const bool isLocked = gdiPlus.GdipBitmapLockBits(bitmap, &whole, Gdiplus::ImageLockModeWrite,
                                                     PixelFormat32bppARGB, &target) == Gdiplus::Ok;
    if (!isLocked) {
        gdiPlus.GdipDisposeImage(bitmap);
        return nullptr;
    }
    for (int32_t y = 0; y < pixels.height; ++y) {
        const auto* row = pixels.argb.data() + ptrdiff_t{y} * pixels.width;
        auto* to = static_cast<uint8_t*>(target.Scan0) + ptrdiff_t{y} * target.Stride;
        std::copy_n(row, pixels.width, reinterpret_cast<uint32_t*>(to));
    }
    gdiPlus.GdipBitmapUnlockBits(bitmap, &target);
    return bitmap;
}

CanvasImage LoadCanvasImage(const std::wstring& path) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    if (!gdiPlus) return -1;

    Gdiplus::GpImage* image = nullptr;
    if (gdiPlus->GdipLoadImageFromFile(path.c_str(), &image) != Gdiplus::Ok) return -1;
    return Add(image);
}

CanvasImage MakeCanvasImage(const DecodedImage& pixels) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    Gdiplus::GpBitmap* bitmap = gdiPlus ? BitmapOf(*gdiPlus, pixels) : nullptr;
    return bitmap ? Add(bitmap) : -1;
}

// By the system, which may fail. `image` and `rect` are valid.
static bool DrawAnew(CanvasImage image, const Rect& rect) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    Gdiplus::GpGraphics* graphics = nullptr;
    if (!gdiPlus || gdiPlus->GdipCreateFromHDC(CanvasDevice(), &graphics) != Gdiplus::Ok) return false;
    gdiPlus->GdipSetInterpolationMode(graphics, Gdiplus::InterpolationModeNearestNeighbor);
    const auto status = gdiPlus->GdipDrawImageRectI(graphics, images[static_cast<size_t>(image)], rect.left,
                                                    rect.top, Width(rect), Height(rect));
    gdiPlus->GdipDeleteGraphics(graphics);
    return status == Gdiplus::Ok;
}

void DrawCanvasImage(CanvasImage image, const Rect& rect) {
    if (!CanvasDevice() || image < 0 || image >= static_cast<CanvasImage>(images.size())) return;
    if (Width(rect) <= 0 || Height(rect) <= 0) return;
    if (!DrawCachedImage(image, rect)) CacheImage(image, rect, DrawAnew);
}

void ReleaseCanvasImages() {
    if (const GdiPlusCalls* gdiPlus = GdiPlus(); gdiPlus && !images.empty()) {
        for (Gdiplus::GpImage* image : images) gdiPlus->GdipDisposeImage(image);
    }
    images.clear();
    windowCanvas.cachedImages = {};
    ReleaseWindowIcons();
}
