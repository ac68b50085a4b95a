#include "platform/canvas.h"

#include "platform/files.h"
#include "platform/headless/headless.h"

static std::vector<std::wstring> canvasImages;  // paths, by CanvasImage

Pixel* CreateCanvas(int32_t width, int32_t height) {
    headless.pixels.clear();
    if (headless.canvasFails) return nullptr;
    ++headless.canvasesMade;
    headless.canvasSize = {width, height};
    headless.pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    return headless.pixels.data();
}

void DestroyCanvas() { headless.pixels.clear(); }

void FlushCanvas() { ++headless.flushes; }

void PresentCanvas() {
    ++headless.presents;
    if (headless.onPresent != nullptr) headless.onPresent();
}

CanvasImage LoadCanvasImage(const std::wstring& path) {
    if (KindOfPath(path) != PathKind::File) return -1;
    canvasImages.push_back(path);
    return static_cast<CanvasImage>(canvasImages.size()) - 1;
}

CanvasImage MakeCanvasImage(const DecodedImage& pixels) {
    headless.madeImages.push_back(pixels);
    canvasImages.push_back(L"made " + std::to_wstring(headless.madeImages.size()));
    return static_cast<CanvasImage>(canvasImages.size()) - 1;
}

void DrawCanvasImage(CanvasImage image, const Rect& rect) {
    if (image < 0 || static_cast<size_t>(image) >= canvasImages.size()) return;
    headless.images.push_back({canvasImages[static_cast<size_t>(image)], rect});
}

void LoadWindowIcon(const std::wstring& path) { headless.windowIcon = path; }
void MakeWindowIcon(const DecodedImage& pixels) { headless.madeWindowIcon = pixels.argb; }

void ReleaseCanvasImages() { canvasImages.clear(); }
