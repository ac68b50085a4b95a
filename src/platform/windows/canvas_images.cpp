#include "platform/windows/canvas_images.h"

#include "platform/canvas.h"
#include "platform/windows/canvas_device.h"
#include "platform/windows/gdi_plus.h"
#include "platform/windows/main_window.h"

#include <vector>

static std::vector<Gdiplus::GpImage*> images;  // indexed by CanvasImage
static HICON windowIcon = nullptr;

HICON WindowIcon() { return windowIcon; }

CanvasImage LoadCanvasImage(const std::wstring& path) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    if (!gdiPlus) return -1;

    Gdiplus::GpImage* image = nullptr;
    if (gdiPlus->GdipLoadImageFromFile(path.c_str(), &image) != Gdiplus::Ok) return -1;
    images.push_back(image);
    return static_cast<CanvasImage>(images.size()) - 1;
}

void DrawCanvasImage(CanvasImage image, const Rect& rect) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    if (!gdiPlus || !CanvasDevice()) return;
    if (image < 0 || image >= static_cast<CanvasImage>(images.size())) return;
    if (Width(rect) <= 0 || Height(rect) <= 0) return;

    Gdiplus::GpGraphics* graphics = nullptr;
    if (gdiPlus->GdipCreateFromHDC(CanvasDevice(), &graphics) != Gdiplus::Ok) return;
    gdiPlus->GdipSetInterpolationMode(graphics, Gdiplus::InterpolationModeNearestNeighbor);
    gdiPlus->GdipDrawImageRectI(graphics, images[static_cast<size_t>(image)], rect.left, rect.top,
                                Width(rect), Height(rect));
    gdiPlus->GdipDeleteGraphics(graphics);
}

void LoadWindowIcon(const std::wstring& path) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    if (!gdiPlus) return;

    Gdiplus::GpBitmap* bitmap = nullptr;
    if (gdiPlus->GdipCreateBitmapFromFile(path.c_str(), &bitmap) != Gdiplus::Ok) return;
    HICON icon = nullptr;
    const bool isMade = gdiPlus->GdipCreateHICONFromBitmap(bitmap, &icon) == Gdiplus::Ok;
    gdiPlus->GdipDisposeImage(bitmap);
    if (!isMade) return;

    ShowWindowIcon(icon);
    if (windowIcon) DestroyIcon(windowIcon);
    windowIcon = icon;
}

void ReleaseCanvasImages() {
    if (const GdiPlusCalls* gdiPlus = GdiPlus(); gdiPlus && !images.empty()) {
        for (Gdiplus::GpImage* image : images) gdiPlus->GdipDisposeImage(image);
    }
    images.clear();
    if (windowIcon) DestroyIcon(windowIcon);
    windowIcon = nullptr;
}
