#include "render/text_runs.h"

#include "platform/canvas.h"

#include <algorithm>
#include <functional>
#include <utility>

constexpr uint32_t kColorBits = 0xFFFFFF;  // the system leaves anything in a pixel's fourth byte
constexpr uint32_t kHalfOfEachChannel = 0x808080;
constexpr size_t kLongestText = 256;  // units; longer ones are rare, and large
constexpr size_t kMostRuns = 8192;
constexpr size_t kMostPixels = 2'000'000;  // 8 MB

size_t TextRunHash::operator()(const TextRunView& run) const {
    size_t hash = std::hash<std::wstring_view>{}(run.text);
    const auto shape = static_cast<uint32_t>(run.style.height * 1024 + run.style.weight);
    for (uint32_t part : {static_cast<uint32_t>(run.style.color), run.background, shape}) {
        hash = (hash ^ part) * 0x9E3779B97F4A7C15u;
    }
    return hash;
}

static uint32_t ColorOf(Pixel pixel) { return static_cast<uint32_t>(pixel) & kColorBits; }

static Pixel* PixelsFrom(Point p, const Surface& surface) {
    return surface.pixels + static_cast<ptrdiff_t>(p.y) * surface.width + p.x;
}

static bool IsInside(const Rect& rect, const Surface& surface) {
    return rect.left >= 0 && rect.top >= 0 && rect.right <= surface.width && rect.bottom <= surface.height;
}

static bool IsOfOneColor(const Rect& rect, uint32_t color, const Surface& surface) {
    for (int32_t y = rect.top; y < rect.bottom; ++y) {
        const Pixel* row = PixelsFrom({rect.left, y}, surface);
        uint32_t difference = 0;
        for (int32_t i = 0; i < Width(rect); ++i) difference |= ColorOf(row[i]) ^ color;
        if (difference != 0) return false;
    }
    return true;
}

static Rect Moved(const Rect& rect, Point by) {
    return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
}

static size_t IndexIn(const TextPicture& picture, int32_t x, int32_t y) {
    return static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x);
}

// The smallest rectangle around all pixels that differ from the background, in either of two pictures of the
// same text. One picture would miss pixels that happen to have the colour of its background; the two
// backgrounds are so different that every pixel of the text shows on one of them.
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

// One more pixel on each side: the system may leave traces there that are too faint to show on these
// backgrounds.
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

// False when the text reaches beyond its picture, which then holds only part of it.
static bool Fits(const Rect& part, const TextPicture& picture) {
    return part.left >= 0 && part.top >= 0 && part.right <= picture.width && part.bottom <= picture.height;
}

// The margin is the height of the text: accents, long tails and slanted letters reach out of their cells.
static bool Rasterize(const TextRunView& view, uint32_t background, TextPicture& picture) {
    const TextStyle& style = view.style;
    return RasterizeText(std::wstring(view.text), style.color, style.height, style.weight, Pixel{background},
                         style.height, picture);
}

// Fills a run: the system draws the text on its background and on a very different one, and what differs
// from the backgrounds is kept. A text that does not fit its picture is marked, so that it is not tried
// again.
static void Rasterize(const TextRunView& view, TextRun& run) {
    run.state = TextRunState::NotCacheable;
    const uint32_t ground = view.background, otherGround = ground ^ kHalfOfEachChannel;
    TextPicture picture, other;
    if (!Rasterize(view, ground, picture) || !Rasterize(view, otherGround, other)) return;
    if (picture.width != other.width || picture.height != other.height) return;
    const Rect ink = WithRim(InkOf(picture, ground, other, otherGround));
    if (!Fits(ink, picture)) return;

    run.state = TextRunState::Cached;
    run.ink = Moved(ink, {-view.style.height, -view.style.height});
    run.pixels = Cut(picture, ink);
}

// Null for a text that is asked for the first time, and for one that must always be drawn.
//
// A text that is shown once may be gone in the next frame, like that of a counter, so only the second
// request pays for two pictures of it. A full cache is emptied as a whole: what is shown comes back within
// two frames, and nobody has to keep track of when each run was used last.
static const TextRun* FindRun(const TextRunView& view, TextRunCache& cache) {
    const auto found = cache.runs.find(view);
    if (found == cache.runs.end()) {
        if (cache.runs.size() >= kMostRuns || cache.pixels >= kMostPixels) cache = {};
        cache.runs.try_emplace({std::wstring(view.text), view.style, view.background});
        return nullptr;
    }
    TextRun& run = found->second;
    if (run.state == TextRunState::AskedOnce) {
        Rasterize(view, run);
        cache.pixels += run.pixels.size();
    }
    return run.state == TextRunState::Cached ? &run : nullptr;
}

static void CopyRun(const TextRun& run, const Rect& place, const Surface& surface) {
    for (int32_t y = 0; y < Height(place); ++y) {
        const ptrdiff_t from = static_cast<ptrdiff_t>(y) * Width(place);
        std::copy_n(run.pixels.data() + from, Width(place), PixelsFrom({place.left, place.top + y}, surface));
    }
}

// The cached pixels hold the text blended with one colour, so they stand for it only where every pixel below
// has that colour now: it is part of the key, and all of the place is compared with it.
std::optional<Rect> DrawCachedText(Point corner, std::wstring_view text, const TextStyle& style,
                                   TextRunCache& cache, Surface& surface) {
    if (text.size() > kLongestText || !IsInside({corner.x, corner.y, corner.x + 1, corner.y + 1}, surface))
        return {};
    PreparePixelAccess(surface);
    const uint32_t background = ColorOf(*PixelsFrom(corner, surface));
    const TextRun* run = FindRun({text, style, background}, cache);
    if (run == nullptr) return {};

    const Rect place = Moved(run->ink, corner);
    if (!IsInside(place, surface) || !IsOfOneColor(place, background, surface)) return {};
    CopyRun(*run, place, surface);
    return place;
}
