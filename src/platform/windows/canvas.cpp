#include "platform/canvas.h"

#include "platform/windows/canvas_device.h"
#include "platform/windows/main_window.h"

#include <vector>

namespace {

struct CanvasFont {
    int32_t height = 0, weight = 0;
    HFONT font = nullptr;
};

struct Canvas {
    HDC device = nullptr;           // made once, kept until the program ends
    HGDIOBJ firstBitmap = nullptr;  // what the device held when it was made
    HBITMAP bitmap = nullptr;
    int32_t width = 0, height = 0;  // of `bitmap`
    std::vector<CanvasFont> fonts{};
};

Canvas canvas;

}  // namespace

static BITMAPINFO TopDownPixels(int32_t width, int32_t height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // rows run from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

// A bitmap can only be deleted while no device context holds it.
static void DeleteBitmap() {
    if (!canvas.bitmap) return;
    SelectObject(canvas.device, canvas.firstBitmap);
    DeleteObject(canvas.bitmap);
    canvas.bitmap = nullptr;
    canvas.width = canvas.height = 0;
}

static HFONT MakeFont(int32_t height, int32_t weight) {
    return CreateFontW(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Segoe UI");
}

// Fonts are few and are asked for a hundred times a frame, so each is made once.
static HFONT FindFont(int32_t height, int32_t weight) {
    for (const CanvasFont& known : canvas.fonts) {
        if (known.height == height && known.weight == weight) return known.font;
    }
    const HFONT font = MakeFont(height, weight);
    if (font) canvas.fonts.push_back({height, weight, font});
    return font;
}

HDC CanvasDevice() { return canvas.bitmap ? canvas.device : nullptr; }

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
    SetBkMode(canvas.device, TRANSPARENT);
    canvas.bitmap = bitmap;
    canvas.width = width;
    canvas.height = height;
    return static_cast<Pixel*>(pixels);
}

void DestroyCanvas() {
    DeleteBitmap();
    for (const CanvasFont& known : canvas.fonts) DeleteObject(known.font);
    if (canvas.device) DeleteDC(canvas.device);
    canvas = {};
}

void DrawCanvasText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
                    int32_t weight) {
    if (!canvas.bitmap || text.empty()) return;
    const HFONT font = FindFont(height, weight);
    if (!font) return;

    const HGDIOBJ previous = SelectObject(canvas.device, font);
    SetTextColor(canvas.device, static_cast<COLORREF>(color));
    TextOutW(canvas.device, x, y, text.c_str(), static_cast<int>(text.size()));
    SelectObject(canvas.device, previous);
}

void FlushCanvas() { GdiFlush(); }

void PresentCanvas() {
    if (!canvas.bitmap || !MainWindow()) return;
    const HDC windowDevice = GetDC(MainWindow());
    BitBlt(windowDevice, 0, 0, canvas.width, canvas.height, canvas.device, 0, 0, SRCCOPY);
    ReleaseDC(MainWindow(), windowDevice);
}
