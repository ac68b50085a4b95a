// Texts cached as pixels. The system needs tens of microseconds for a string. A frame of the editor shows a
// hundred strings or more, most of them the same as in the frame before.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "render/drawing_list.h"
#include "render/raster/surface.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// What a run is looked up by, without a copy of its text.
struct TextRunView {
    std::wstring_view text{};
    TextStyle style{};
    uint32_t background = 0;  // 0x00RRGGBB

    friend bool operator==(const TextRunView&, const TextRunView&) = default;
};

struct TextRunKey {
    std::wstring text{};
    TextStyle style{};
    uint32_t background = 0;

    operator TextRunView() const { return {text, style, background}; }
};

struct TextRunHash {
    using is_transparent = void;
    size_t operator()(const TextRunView& run) const;
};

struct TextRunsAreEqual {
    using is_transparent = void;
    bool operator()(const TextRunView& a, const TextRunView& b) const { return a == b; }
};

enum class TextRunState { AskedOnce, Cached, NotCacheable };

struct TextRun {
    TextRunState state = TextRunState::AskedOnce;
    Rect ink{};                   // around all that the text leaves, from the text's corner
    std::vector<Pixel> pixels{};  // of `ink`, row by row
};

struct TextRunCache {
    std::unordered_map<TextRunKey, TextRun, TextRunHash, TextRunsAreEqual> runs{};
    size_t pixels = 0;  // of all runs
};

// Draws a text out of cached pixels, so that the picture is the one that the system would make. Gives the
// rectangle around what it wrote. None, with nothing drawn, when the text is new, hangs over an edge of the
// surface, or lies on more than one colour: the system must draw it then. A text asked for a second time is
// cached from then on.
std::optional<Rect> DrawCachedText(Point corner, std::wstring_view text, const TextStyle& style,
                                   TextRunCache& cache, Surface& surface);
