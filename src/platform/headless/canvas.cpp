#include "platform/canvas.h"

#include "platform/files.h"
#include "platform/headless/headless.h"

#include <algorithm>
#include <utility>
#include <vector>

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

static void CopyToWindow(const Rect& part) {
    const auto width = static_cast<size_t>(headless.canvasSize.width);
    for (int32_t y = part.top; y < part.bottom; ++y) {
        const size_t first = static_cast<size_t>(y) * width + static_cast<size_t>(part.left);
        std::copy_n(headless.pixels.data() + first, Width(part), headless.windowPixels.data() + first);
    }
}

void PresentCanvas() {
    const Rect whole{0, 0, headless.canvasSize.width, headless.canvasSize.height};
    PresentCanvas(std::span(&whole, 1));
}

void PresentCanvas(std::span<const Rect> changed) {
    ++headless.presents;
    if (headless.hasWindowPixels) {
        headless.windowPixels.resize(headless.pixels.size());
        for (const Rect& part : changed) CopyToWindow(part);
    }
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

// Texts are noted in a list, and painted on request. A painted text stands for a real one: every character
// has marks of its own, blended into what lies under them, and a text reaches out of its cell as real letters
// do.

constexpr int32_t kOverhang = 2;  // pixels that a text reaches beyond its cell on the left and below

namespace {

// Pixels to paint into.
struct Target {
    Pixel* pixels = nullptr;
    int32_t width = 0, height = 0;
};

}  // namespace

static int32_t Advance(int32_t height) { return std::max(height / 2, 1); }

// How much of a pixel the text covers, in quarters.
static uint32_t Coverage(wchar_t character, int32_t column, int32_t row, int32_t weight) {
    if (character == L' ') return 0;
    const auto seed = static_cast<uint32_t>(character) * 2654435761u;
    const auto place = static_cast<uint32_t>((column + kOverhang) * 37 + row * 101);
    const uint32_t quarters = ((seed ^ (place * 2246822519u)) >> 16) % 4;
    return std::min(quarters + (weight > 400 ? 1u : 0u), 4u);
}

static uint32_t Blend(uint32_t under, uint32_t over, uint32_t quarters) {
    return (under * (4 - quarters) + over * quarters) / 4;
}

static void PaintPixel(const Target& target, Point p, TextColor color, uint32_t quarters) {
    if (p.x < 0 || p.y < 0 || p.x >= target.width || p.y >= target.height) return;
    const auto index =
        static_cast<size_t>(p.y) * static_cast<size_t>(target.width) + static_cast<size_t>(p.x);
    const auto under = static_cast<uint32_t>(target.pixels[index]);
    const auto text = static_cast<uint32_t>(color);
    const uint32_t red = Blend(under >> 16 & 0xFF, text & 0xFF, quarters);
    const uint32_t green = Blend(under >> 8 & 0xFF, text >> 8 & 0xFF, quarters);
    const uint32_t blue = Blend(under & 0xFF, text >> 16 & 0xFF, quarters);
    target.pixels[index] = Pixel{red << 16 | green << 8 | blue};
}

// Marks and no letters: a test compares pictures and does not read them, and marks are the same on every
// machine.
static void PaintText(const Target& target, Point corner, const DrawnText& text) {
    const int32_t advance = Advance(text.height);
    for (size_t i = 0; i < text.text.size(); ++i) {
        const int32_t left = corner.x + static_cast<int32_t>(i) * advance;
        for (int32_t row = 0; row < text.height + kOverhang; ++row) {
            for (int32_t column = -kOverhang; column < advance - 1; ++column) {
                const uint32_t quarters = Coverage(text.text[i], column, row, text.weight);
                PaintPixel(target, {left + column, corner.y + row}, text.color, quarters);
            }
        }
    }
}

void DrawCanvasText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
                    int32_t weight) {
    headless.texts.push_back({x, y, text, color, height, weight});
    if (!headless.paintsTexts) return;
    const Target canvas{headless.pixels.data(), headless.canvasSize.width, headless.canvasSize.height};
    PaintText(canvas, {x, y}, headless.texts.back());
}

int32_t MeasureCanvasText(const std::wstring& text, int32_t height, int32_t) {
    return static_cast<int32_t>(text.size()) * Advance(height);
}

bool RasterizeText(const std::wstring& text, TextColor color, int32_t height, int32_t weight,
                   Pixel background, int32_t margin, TextPicture& picture) {
    if (!headless.paintsTexts || text.empty()) return false;
    const int32_t width = static_cast<int32_t>(text.size()) * Advance(height) + 2 * margin;
    TextPicture drawn{width, height + 2 * margin, {}};
    drawn.pixels.assign(static_cast<size_t>(drawn.width) * static_cast<size_t>(drawn.height), background);
    PaintText({drawn.pixels.data(), drawn.width, drawn.height}, {margin, margin},
              {0, 0, text, color, height, weight});
    picture = std::move(drawn);
    return true;
}
