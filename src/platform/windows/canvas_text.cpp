// Texts on the canvas and beside it, drawn by the system.
#include "platform/canvas.h"
#include "platform/windows/canvas_device.h"

#include <algorithm>

namespace {

// A device context with a bitmap of its own, for the time of one text.
struct TextBitmap {
    HDC device = nullptr;
    HBITMAP bitmap = nullptr;
    HGDIOBJ firstBitmap = nullptr;  // what the device held when it was made
    Pixel* pixels = nullptr;        // null when there is no memory

    TextBitmap(int32_t width, int32_t height) : device(CreateCompatibleDC(nullptr)) {
        const BITMAPINFO info = TopDownPixels(width, height);
        void* memory = nullptr;
        bitmap = CreateDIBSection(device, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
        if (!device || !bitmap) return;
        firstBitmap = SelectObject(device, bitmap);
        pixels = static_cast<Pixel*>(memory);
    }
    ~TextBitmap() {
        if (firstBitmap) SelectObject(device, firstBitmap);
        if (bitmap) DeleteObject(bitmap);
        if (device) DeleteDC(device);
    }
    TextBitmap(const TextBitmap&) = delete;
    TextBitmap& operator=(const TextBitmap&) = delete;
};

}  // namespace

// A positive height is that of the cell, with the room for accents.
static HFONT MakeFont(int32_t height, int32_t weight) {
    return CreateFontW(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Segoe UI");
}

// Fonts are few and are asked for a hundred times a frame, so each is made once.
static HFONT FindFont(int32_t height, int32_t weight) {
    for (const CanvasFont& known : windowCanvas.fonts) {
        if (known.height == height && known.weight == weight) return known.font;
    }
    const HFONT font = MakeFont(height, weight);
    if (font) windowCanvas.fonts.push_back({height, weight, font});
    return font;
}

static void Write(HDC device, HFONT font, Point corner, const std::wstring& text, TextColor color) {
    const HGDIOBJ previous = SelectObject(device, font);
    SetBkMode(device, TRANSPARENT);
    SetTextColor(device, static_cast<COLORREF>(color));
    TextOutW(device, corner.x, corner.y, text.c_str(), static_cast<int>(text.size()));
    SelectObject(device, previous);
}

// Empty when the system cannot measure it.
static SIZE Extent(HDC device, HFONT font, const std::wstring& text) {
    SIZE extent{};
    const HGDIOBJ previous = SelectObject(device, font);
    if (!GetTextExtentPoint32W(device, text.c_str(), static_cast<int>(text.size()), &extent)) extent = {};
    SelectObject(device, previous);
    return extent;
}

void DrawCanvasText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
                    int32_t weight) {
    if (!CanvasDevice() || text.empty()) return;
    if (const HFONT font = FindFont(height, weight)) Write(CanvasDevice(), font, {x, y}, text, color);
}

int32_t MeasureCanvasText(const std::wstring& text, int32_t height, int32_t weight) {
    const HFONT font = FindFont(height, weight);
    return CanvasDevice() && font ? Extent(CanvasDevice(), font, text).cx : 0;
}

// Draws the text onto a bitmap of the ground's colour, with a margin for what reaches out of its cell. The
// caller keeps the picture and copies it from then on, which is fifty times as fast as the system.
bool RasterizeText(const std::wstring& text, TextColor color, int32_t height, int32_t weight,
                   Pixel background, int32_t margin, TextPicture& picture) {
    const HFONT font = FindFont(height, weight);
    if (!CanvasDevice() || !font || text.empty()) return false;
    const SIZE extent = Extent(CanvasDevice(), font, text);
    if (extent.cx < 1 || extent.cy < 1) return false;

    const int32_t pictureWidth = extent.cx + 2 * margin, pictureHeight = extent.cy + 2 * margin;
    const TextBitmap bitmap(pictureWidth, pictureHeight);
    if (!bitmap.pixels) return false;
    const auto count = static_cast<size_t>(pictureWidth) * static_cast<size_t>(pictureHeight);
    std::fill_n(bitmap.pixels, count, background);
    Write(bitmap.device, font, {margin, margin}, text, color);
    FlushCanvas();
    picture = {pictureWidth, pictureHeight, {bitmap.pixels, bitmap.pixels + count}};
    return true;
}
