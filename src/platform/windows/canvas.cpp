#include "platform/canvas.h"

#include "platform/windows/canvas_device.h"
#include "platform/windows/main_window.h"

namespace {

struct Canvas {
    HDC device = nullptr;           // made once, kept until the program ends
    HGDIOBJ firstBitmap = nullptr;  // what the device held when it was made
    HBITMAP bitmap = nullptr;
    CanvasPixels pixels{};  // of `bitmap`
};

Canvas canvas;

}  // namespace

// A bitmap can only be deleted while no device context holds it.
static void DeleteBitmap() {
    if (!canvas.bitmap) return;
    SelectObject(canvas.device, canvas.firstBitmap);
    DeleteObject(canvas.bitmap);
    canvas.bitmap = nullptr;
    canvas.pixels = {};
}

HDC CanvasDevice() { return canvas.bitmap ? canvas.device : nullptr; }

CanvasPixels PixelsOfCanvas() { return canvas.pixels; }

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

Pixel* CreateCanvas(int32_t width, int32_t height) {
    const HDC windowDevice = GetDC(MainWindow());
    if (!canvas.device) canvas.device = CreateCompatibleDC(windowDevice);
    DeleteBitmap();
    const BITMAPINFO info = TopDownPixels(width, height);
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(windowDevice, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    ReleaseDC(MainWindow(), windowDevice);
    if (!bitmap || !canvas.device) {
        DeleteObject(bitmap);
        return nullptr;
    }

    const HGDIOBJ previous = SelectObject(canvas.device, bitmap);
    if (!canvas.firstBitmap) canvas.firstBitmap = previous;
    canvas.bitmap = bitmap;
    canvas.pixels = {static_cast<Pixel*>(pixels), width, height};
    return canvas.pixels.first;
}

void DestroyCanvas() {
    DeleteBitmap();
    ReleaseCanvasFonts();
    if (canvas.device) DeleteDC(canvas.device);
    canvas = {};
}

void FlushCanvas() { GdiFlush(); }

void PresentCanvas() {
    if (!canvas.bitmap || !MainWindow()) return;
    const HDC windowDevice = GetDC(MainWindow());
    BitBlt(windowDevice, 0, 0, canvas.pixels.width, canvas.pixels.height, canvas.device, 0, 0, SRCCOPY);
    ReleaseDC(MainWindow(), windowDevice);
}
