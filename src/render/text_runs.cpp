#include "render/text_runs.h"

#include "platform/canvas.h"
#include "render/frame_buffer.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

constexpr uint32_t kColorBits = 0xFFFFFF;  // the system leaves anything in a pixel's fourth byte
constexpr uint32_t kHalfOfEachChannel = 0x808080;
constexpr size_t kLongestText = 256;  // units; longer ones are rare, and large
constexpr size_t kMostRuns = 8192;
constexpr size_t kMostPixels = 2'000'000;  // 8 MB

namespace {

struct RunStyle {
    TextColor color{};
    int32_t height = 0, weight = 0;
    uint32_t background = 0;  // 0x00RRGGBB

    friend bool operator==(const RunStyle&, const RunStyle&) = default;
};

// A run is looked up without a copy of its text.
struct RunView {
    std::wstring_view text{};
    RunStyle style{};

    friend bool operator==(const RunView&, const RunView&) = default;
};

struct RunKey {
    std::wstring text{};
    RunStyle style{};

    operator RunView() const { return {text, style}; }
};

struct RunHash {
    using is_transparent = void;

    size_t operator()(const RunView& run) const {
        size_t hash = std::hash<std::wstring_view>{}(run.text);
        const auto shape = static_cast<uint32_t>(run.style.height * 1024 + run.style.weight);
        for (uint32_t part : {static_cast<uint32_t>(run.style.color), run.style.background, shape}) {
            hash = (hash ^ part) * 0x9E3779B97F4A7C15u;
        }
        return hash;
    }
};

struct RunsAreEqual {
    using is_transparent = void;

    bool operator()(const RunView& a, const RunView& b) const { return a == b; }
};

enum class RunState { AskedOnce, Kept, NotKeepable };

struct TextRun {
    RunState state = RunState::AskedOnce;
    Rect ink{};                   // around all that the text leaves, from the text's corner
    std::vector<Pixel> pixels{};  // of `ink`, row by row
};

struct KeptTexts {
    std::unordered_map<RunKey, TextRun, RunHash, RunsAreEqual> runs{};
    size_t pixels = 0;  // of all runs
};

KeptTexts kept;

}  // namespace

static uint32_t ColorOf(Pixel pixel) { return static_cast<uint32_t>(pixel) & kColorBits; }

static const Pixel* PixelsFrom(int32_t x, int32_t y) {
    return frameBuffer.pixels + static_cast<ptrdiff_t>(y) * frameBuffer.width + x;
}

static bool IsInsideBuffer(const Rect& rect) {
    return rect.left >= 0 && rect.top >= 0 && rect.right <= frameBuffer.width &&
           rect.bottom <= frameBuffer.height;
}

static bool IsOfOneColor(const Rect& rect, uint32_t color) {
    for (int32_t y = rect.top; y < rect.bottom; ++y) {
        const Pixel* row = PixelsFrom(rect.left, y);
        uint32_t difference = 0;
        for (int32_t i = 0; i < Width(rect); ++i) difference |= ColorOf(row[i]) ^ color;
        if (difference != 0) return false;
    }
    return true;
}

static Rect Moved(const Rect& rect, int32_t x, int32_t y) {
    return {rect.left + x, rect.top + y, rect.right + x, rect.bottom + y};
}

static size_t IndexIn(const TextPicture& picture, int32_t x, int32_t y) {
    return static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x);
}

// The smallest rectangle around all pixels that are not of the colour that a picture started from, in either
// of two pictures of the same text: on one of two backgrounds that far apart every mark is seen.
static Rect InkOf(const TextPicture& first, uint32_t firstGround, const TextPicture& second,
                  uint32_t secondGround) {
    Rect ink{first.width, first.height, 0, 0};
    for (int32_t y = 0; y < first.height; ++y) {
        for (int32_t x = 0; x < first.width; ++x) {
            const size_t i = IndexIn(first, x, y);
            if (ColorOf(first.pixels[i]) == firstGround && ColorOf(second.pixels[i]) == secondGround)
                continue;
            ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                   std::max(ink.bottom, y + 1)};
        }
    }
    return ink.right == 0 ? Rect{} : ink;
}

// A pixel more on each side, where the system may leave traces too faint for these backgrounds.
static Rect WithRim(const Rect& ink) {
    if (Width(ink) == 0) return ink;
    return {ink.left - 1, ink.top - 1, ink.right + 1, ink.bottom + 1};
}

static std::vector<Pixel> Cut(const TextPicture& picture, const Rect& part) {
    std::vector<Pixel> pixels;
    for (int32_t y = part.top; y < part.bottom; ++y) {
        for (int32_t x = part.left; x < part.right; ++x) {
            const Pixel pixel = picture.pixels[IndexIn(picture, x, y)];
            pixels.push_back(Pixel{ColorOf(pixel)});
        }
    }
    return pixels;
}

// What leaves the picture is not all that there is.
static bool Fits(const Rect& part, const TextPicture& picture) {
    return part.left >= 0 && part.top >= 0 && part.right <= picture.width && part.bottom <= picture.height;
}

// The margin is the text's height: slanted letters, accents and long tails reach out of the cell.
static bool Rasterize(const RunView& view, uint32_t background, TextPicture& picture) {
    const RunStyle& style = view.style;
    return RasterizeText(std::wstring(view.text), style.color, style.height, style.weight, Pixel{background},
                         style.height, picture);
}

static void Keep(const RunView& view, TextRun& run) {
    run.state = RunState::NotKeepable;
    const uint32_t ground = view.style.background, otherGround = ground ^ kHalfOfEachChannel;
    TextPicture picture, other;
    if (!Rasterize(view, ground, picture) || !Rasterize(view, otherGround, other)) return;
    if (picture.width != other.width || picture.height != other.height) return;
    const Rect ink = WithRim(InkOf(picture, ground, other, otherGround));
    if (!Fits(ink, picture)) return;

    run.state = RunState::Kept;
    run.ink = Moved(ink, -view.style.height, -view.style.height);
    run.pixels = Cut(picture, ink);
    kept.pixels += run.pixels.size();
}

// Null for a text that is asked for the first time, and for one that must always be drawn.
static const TextRun* FindKeptRun(const RunView& view) {
    const auto found = kept.runs.find(view);
    if (found == kept.runs.end()) {
        if (kept.runs.size() >= kMostRuns || kept.pixels >= kMostPixels) ForgetKeptTexts();
        kept.runs.try_emplace({std::wstring(view.text), view.style});
        return nullptr;
    }
    TextRun& run = found->second;
    if (run.state == RunState::AskedOnce) Keep(view, run);
    return run.state == RunState::Kept ? &run : nullptr;
}

static void CopyRun(const TextRun& run, const Rect& place) {
    for (int32_t y = 0; y < Height(place); ++y) {
        const ptrdiff_t from = static_cast<ptrdiff_t>(y) * Width(place);
        Pixel* to =
            frameBuffer.pixels + static_cast<ptrdiff_t>(place.top + y) * frameBuffer.width + place.left;
        std::copy_n(run.pixels.data() + from, Width(place), to);
    }
}

bool DrawKeptText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
                  int32_t weight) {
    if (text.size() > kLongestText || !IsInsideBuffer({x, y, x + 1, y + 1})) return false;
    PreparePixelAccess();
    const uint32_t background = ColorOf(*PixelsFrom(x, y));
    const TextRun* run = FindKeptRun({text, {color, height, weight, background}});
    if (run == nullptr) return false;

    const Rect place = Moved(run->ink, x, y);
    if (!IsInsideBuffer(place) || !IsOfOneColor(place, background)) return false;
    CopyRun(*run, place);
    return true;
}

void ForgetKeptTexts() { kept = {}; }
