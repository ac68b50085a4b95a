#include "platform/canvas.h"

#include "platform/windows/canvas_device.h"
#include "platform/windows/main_window.h"

#include <utility>

Canvas windowCanvas;

// A bitmap can only be deleted while no device context holds it.
static void DeleteBitmap() {
    if (!windowCanvas.bitmap) return;
    SelectObject(windowCanvas.device, windowCanvas.firstBitmap);
    DeleteObject(windowCanvas.bitmap);
    windowCanvas.bitmap = nullptr;
    windowCanvas.pixels = {};
}

HDC CanvasDevice() { return windowCanvas.bitmap ? windowCanvas.device : nullptr; }

BITMAPINFO TopDownPixels(int32_t width, int32_t height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // rows run from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

// One bitmap whose pixels lie in our memory and which the system can draw on too: the renderer writes shapes
// into it, the system adds its texts, and one copy brings all of it to the window. Between a drawing of the
// system and a look at the pixels stands FlushCanvas, because the system may collect its calls.
Pixel* CreateCanvas(int32_t width, int32_t height) {
    const HDC windowDevice = GetDC(MainWindow());
    if (!windowCanvas.device) windowCanvas.device = CreateCompatibleDC(windowDevice);
    DeleteBitmap();
    const BITMAPINFO info = TopDownPixels(width, height);
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(windowDevice, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    ReleaseDC(MainWindow(), windowDevice);
    if (!bitmap || !windowCanvas.device) {
        DeleteObject(bitmap);
        return nullptr;
    }

    const HGDIOBJ previous = SelectObject(windowCanvas.device, bitmap);
    if (!windowCanvas.firstBitmap) windowCanvas.firstBitmap = previous;
    windowCanvas.bitmap = bitmap;
    windowCanvas.isWindowStale = true;
    windowCanvas.pixels = {static_cast<Pixel*>(pixels), width, height};
    return windowCanvas.pixels.first;
}

void DestroyCanvas() {
    DeleteBitmap();
    for (const CanvasFont& made : windowCanvas.fonts) DeleteObject(made.font);
    if (windowCanvas.device) DeleteDC(windowCanvas.device);
    windowCanvas = {};
}

void FlushCanvas() { GdiFlush(); }

void PresentCanvas() {
    const Rect whole{0, 0, windowCanvas.pixels.width, windowCanvas.pixels.height};
    PresentCanvas(std::span(&whole, 1));
}

void PresentCanvas(std::span<const Rect> changed) {
    if (!windowCanvas.bitmap || !MainWindow()) return;
    if (std::exchange(windowCanvas.isWindowStale, false)) return PresentCanvas();
    if (changed.empty()) return;
    const HDC windowDevice = GetDC(MainWindow());
    for (const Rect& part : changed) {
        BitBlt(windowDevice, part.left, part.top, Width(part), Height(part), windowCanvas.device, part.left,
               part.top, SRCCOPY);
    }
    ReleaseDC(MainWindow(), windowDevice);
}
