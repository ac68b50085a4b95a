#include "platform/windows/window_icon.h"

#include "platform/canvas.h"
#include "platform/windows/main_window.h"

#include <algorithm>
#include <array>
#include <cmath>

constexpr int32_t kLargeIcon = 32, kLittleIcon = 16;  // pixels
constexpr WORD kResource = 1;                         // the executable's icon

static WindowIcons made;

// Of the pixels as they are, with their alpha; the mask is what an icon must have, and decides nothing then.
static HICON MakeIcon(const DecodedImage& pixels) {
    // Rows from the bottom up are what an icon's bitmap has by default; a negative height turns them around.
    const BITMAPINFO format{.bmiHeader{.biSize = sizeof(BITMAPINFOHEADER),
                                       .biWidth = pixels.width,
                                       .biHeight = -pixels.height,
                                       .biPlanes = 1,
                                       .biBitCount = 32,
                                       .biCompression = BI_RGB}};
    void* colors = nullptr;
    const HBITMAP color = CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &colors, nullptr, 0);
    const HBITMAP mask = CreateBitmap(pixels.width, pixels.height, 1, 1, nullptr);
    HICON icon = nullptr;
    if (color && mask) {
        std::ranges::copy(pixels.argb, static_cast<uint32_t*>(colors));
        ICONINFO parts{.fIcon = TRUE, .hbmMask = mask, .hbmColor = color};
        icon = CreateIconIndirect(&parts);
    }
    if (color) DeleteObject(color);
    if (mask) DeleteObject(mask);
    return icon;
}

static HICON ResourceIcon(int32_t size) {
    const auto name = MAKEINTRESOURCEW(kResource);
    const HANDLE icon = LoadImageW(GetModuleHandleW(nullptr), name, IMAGE_ICON, size, size, LR_SHARED);
    return icon ? static_cast<HICON>(icon) : LoadIconW(nullptr, IDI_APPLICATION);
}

WindowIcons CurrentWindowIcons() {
    return {made.large ? made.large : ResourceIcon(kLargeIcon),
            made.little ? made.little : ResourceIcon(kLittleIcon)};
}

void ReleaseWindowIcons() {
    for (HICON* icon : {&made.large, &made.little}) {
        if (*icon) DestroyIcon(*icon);
        *icon = nullptr;
    }
}

// How much of the image's pixel `at` lies between `begin` and `end`, 0 .. 1.
static double Share(int32_t at, double begin, double end) {
    return std::max(std::min<double>(at + 1, end) - std::max<double>(at, begin), 0.0);
}

// The average over a part of the image.
static uint32_t Average(const DecodedImage& image, double left, double top, double right, double bottom) {
    double area = 0, opaque = 0;
    std::array<double, 3> channels{};  // blue, green, red, each by how opaque its pixel is
    for (auto y = static_cast<int32_t>(top); y < image.height && y < bottom; ++y) {
        for (auto x = static_cast<int32_t>(left); x < image.width && x < right; ++x) {
            const double share = Share(x, left, right) * Share(y, top, bottom);
            const uint32_t argb =
                image
                    .argb[static_cast<size_t>(y) * static_cast<size_t>(image.width) + static_cast<size_t>(x)];
            const double alpha = share * (argb >> 24);
            area += share;
            opaque += alpha;
            for (size_t c = 0; c < 3; ++c) channels[c] += alpha * (argb >> 8 * c & 0xFF);
        }
    }
    if (opaque <= 0) return 0;
    uint32_t result = static_cast<uint32_t>(std::lround(opaque / area)) << 24;
    for (size_t c = 0; c < 3; ++c)
        result |= static_cast<uint32_t>(std::lround(channels[c] / opaque)) << 8 * c;
    return result;
}

DecodedImage ScaleByArea(const DecodedImage& image, int32_t size) {
    DecodedImage scaled{.width = size, .height = size};
    const double stepX = static_cast<double>(image.width) / size;
    const double stepY = static_cast<double>(image.height) / size;
    for (int32_t y = 0; y < size; ++y) {
        for (int32_t x = 0; x < size; ++x) {
            scaled.argb.push_back(Average(image, x * stepX, y * stepY, (x + 1) * stepX, (y + 1) * stepY));
        }
    }
    return scaled;
}

void MakeWindowIcon(const DecodedImage& pixels) {
    const WindowIcons icons{MakeIcon(ScaleByArea(pixels, kLargeIcon)),
                            MakeIcon(ScaleByArea(pixels, kLittleIcon))};
    ReleaseWindowIcons();
    made = icons;
    ShowWindowIcons(CurrentWindowIcons());
}

void LoadWindowIcon(const std::wstring& path) {
    DecodedImage pixels;
    if (DecodeImageFile(path, pixels)) MakeWindowIcon(pixels);
}
