#include "render/damage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>
#include <type_traits>

constexpr size_t kMostRects = 24;   // more of them become one around all
constexpr size_t kMostAdded = 256;  // likewise, before those that overlap are one

// ---- Rectangles.

static bool IsEmpty(const Rect& r) { return r.right <= r.left || r.bottom <= r.top; }

static Rect Common(const Rect& a, const Rect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

static Rect Around(const Rect& a, const Rect& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

static bool Overlap(const Rect& a, const Rect& b) { return !IsEmpty(Common(a, b)); }

// ---- What a step touches.

// Plain letters of Europe: none is wider than its cell is high, and none reaches farther out of its cell than
// half of that. Of others nothing is known.
static bool IsPlain(std::wstring_view text) {
    return std::ranges::all_of(text, [](wchar_t unit) { return unit >= L' ' && unit < wchar_t{0x250}; });
}

static std::wstring_view LettersOf(const TextStep& text, const DrawingList& list) {
    return std::wstring_view(list.letters).substr(text.begin, text.length);
}

// What a text may leave before it was drawn. The sums are taken in 64 bits: a file may place a text anywhere.
static Rect LikelyInk(const TextStep& text, const DrawingList& list, const Rect& canvas) {
    const std::wstring_view letters = LettersOf(text, list);
    if (!IsPlain(letters)) return canvas;
    const int64_t x = text.corner.x, y = text.corner.y, height = text.style.height, rim = height / 2 + 1;
    const auto count = static_cast<int64_t>(letters.size());
    const auto column = [&canvas](int64_t at) {
        return static_cast<int32_t>(std::clamp<int64_t>(at, canvas.left, canvas.right));
    };
    const auto row = [&canvas](int64_t at) {
        return static_cast<int32_t>(std::clamp<int64_t>(at, canvas.top, canvas.bottom));
    };
    return {column(x - rim), row(y - rim), column(x + count * height + rim), row(y + height + rim)};
}

namespace {

struct BoundsFinder {
    const DrawingList& list;

    Rect operator()(const FillStep& step) const { return step.rect; }
    Rect operator()(const RowsStep& step) const { return step.place; }
    Rect operator()(const ImageStep& step) const { return step.rect; }
    Rect operator()(const TextStep& step) const { return step.ink; }
    Rect operator()(const DepthStep&) const { return list.viewport; }
    Rect operator()(const LineStep&) const { return list.viewport; }
    Rect operator()(const MeshStep&) const { return list.viewport; }
};

}  // namespace

Rect BoundsOf(const DrawingStep& step, const DrawingList& list, const Rect& canvas) {
    return Common(std::visit(BoundsFinder{list}, step), canvas);
}

// Part of a fill or of pixel rows is drawn by itself. A text blends with what lies under it and an image with
// its alpha: drawn a second time over themselves they would come out darker.
static bool CanBeCut(const DrawingStep& step) {
    return std::holds_alternative<FillStep>(step) || std::holds_alternative<RowsStep>(step);
}

// ---- Comparing steps.

// Bits and not numbers: -0 is another number to draw with than 0, and not a number is itself.
template <typename Numbers>
static bool SameBits(const Numbers& a, const Numbers& b) {
    using Bits = std::array<uint32_t, sizeof(Numbers) / sizeof(uint32_t)>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

static bool SameMesh(const MeshInstance& a, const MeshInstance& b) {
    // A new field of the record does not compile here until it is compared too.
    const auto& [eyeA, lightA, viewA, worldA, selectedA, tintA, roughnessA, glossA, textureA, repeatA] =
        a.draw;
    const auto& [eyeB, lightB, viewB, worldB, selectedB, tintB, roughnessB, glossB, textureB, repeatB] =
        b.draw;
    return a.mesh == b.mesh && SameBits(worldA, worldB) && SameBits(viewA, viewB) && SameBits(eyeA, eyeB) &&
           SameBits(lightA, lightB) && selectedA == selectedB && tintA == tintB &&
           SameBits(roughnessA, roughnessB) && SameBits(glossA, glossB) && textureA == textureB &&
           repeatA == repeatB;
}

// Without a mark nobody knows whether a mesh or a texture is still what it was.
static bool AreSameLibrary(const LibraryMarks& a, const LibraryMarks& b) {
    const auto isNull = [](const auto& mark) { return mark == nullptr; };
    return a == b && std::ranges::none_of(a.meshMarks, isNull) &&
           std::ranges::none_of(a.textureMarks, isNull);
}

namespace {

struct StepComparer {
    const DrawingList &shown, &next;
    bool isSameLibrary = AreSameLibrary(shown.library, next.library);

    template <typename Step>
    bool operator()(const Step& a, const Step& b) const {
        return a == b;
    }
    bool operator()(const DepthStep&, const DepthStep&) const { return true; }  // the viewport is the list's
    bool operator()(const TextStep& a, const TextStep& b) const {
        return a.corner == b.corner && a.style == b.style && LettersOf(a, shown) == LettersOf(b, next);
    }
    bool operator()(const MeshStep& a, const MeshStep& b) const {
        const auto first = shown.meshes.begin() + static_cast<ptrdiff_t>(a.begin);
        const auto second = next.meshes.begin() + static_cast<ptrdiff_t>(b.begin);
        return isSameLibrary && a.count == b.count &&
               std::equal(first, first + static_cast<ptrdiff_t>(a.count), second, SameMesh);
    }

    bool AreSame(const DrawingStep& a, const DrawingStep& b) const {
        return a.index() == b.index() && std::visit(
                                             [this, &b](const auto& step) {
                                                 using Step = std::remove_cvref_t<decltype(step)>;
                                                 return (*this)(step, std::get<Step>(b));
                                             },
                                             a);
    }
};

}  // namespace

// ---- The damage.

static void BecomeOne(std::vector<Rect>& rects) {
    Rect all = rects.front();
    for (const Rect& rect : rects) all = Around(all, rect);
    rects = {all};
}

static void Add(const Rect& bounds, std::vector<Rect>& rects) {
    if (IsEmpty(bounds)) return;
    if (!rects.empty() && LiesWithin(bounds, rects.back())) return;  // as most that follow one another
    if (rects.size() >= kMostAdded) BecomeOne(rects);
    rects.push_back(bounds);
}

static void MergeOverlapping(std::vector<Rect>& rects) {
    for (size_t i = 0; i < rects.size(); ++i) {
        for (size_t k = i + 1; k < rects.size();) {
            if (!Overlap(rects[i], rects[k])) {
                ++k;
                continue;
            }
            rects[i] = Around(rects[i], rects[k]);
            rects[k] = rects.back();
            rects.pop_back();
            k = i + 1;  // it has grown, and may reach what it did not reach before
        }
    }
}

// True when no earlier rectangle has grown into another one meanwhile.
static bool AreApart(const std::vector<Rect>& rects) {
    for (size_t i = 0; i < rects.size(); ++i) {
        for (size_t k = i + 1; k < rects.size(); ++k) {
            if (Overlap(rects[i], rects[k])) return false;
        }
    }
    return true;
}

static void PullApart(std::vector<Rect>& rects) {
    while (!AreApart(rects)) MergeOverlapping(rects);
    if (rects.size() > kMostRects) BecomeOne(rects);
}

// Lets each rectangle grow around the steps that it cuts and that cannot be cut, until it cuts none.
static void GrowAroundSteps(const DrawingList& list, const Rect& canvas, std::vector<Rect>& rects) {
    bool hasGrown = !rects.empty();
    while (hasGrown) {
        hasGrown = false;
        for (const DrawingStep& step : list.steps) {
            if (CanBeCut(step)) continue;
            const Rect bounds = BoundsOf(step, list, canvas);
            for (Rect& rect : rects) {
                if (!Overlap(bounds, rect) || LiesWithin(bounds, rect)) continue;
                rect = Around(rect, bounds);
                hasGrown = true;
            }
        }
        PullApart(rects);
    }
}

static void TakeInk(const DrawingStep& shown, DrawingStep& next) {
    if (auto* text = std::get_if<TextStep>(&next)) text->ink = std::get<TextStep>(shown).ink;
}

void FindInks(DrawingList& list, const Rect& canvas) {
    for (DrawingStep& step : list.steps) {
        if (auto* text = std::get_if<TextStep>(&step)) text->ink = LikelyInk(*text, list, canvas);
    }
}

// In go the steps of the picture that is shown and of the next one, out come the rectangles outside of which
// both are equal. A pixel is the work of the steps that touch it, in their order; where none of those is new,
// gone or another one, it is what it was. Most pictures have as many steps as the one before, and differ in a
// few: these are compared in pairs. Else only the equal steps at the beginning and at the end are pairs, and
// all between them counts as damage. Nobody says what has changed: what would be drawn says it.
std::vector<Rect> DamageBetween(const DrawingList& shown, DrawingList& next, const Rect& canvas) {
    FindInks(next, canvas);
    if (shown.viewport != next.viewport) return {canvas};
    const StepComparer comparer{shown, next};
    const size_t before = shown.steps.size(), after = next.steps.size(), fewer = std::min(before, after);
    std::vector<Rect> damage;
    const auto pair = [&](size_t i, size_t k) {
        const bool areSame = comparer.AreSame(shown.steps[i], next.steps[k]);
        if (areSame) TakeInk(shown.steps[i], next.steps[k]);
        return areSame;
    };
    const auto addShown = [&](size_t i) { Add(BoundsOf(shown.steps[i], shown, canvas), damage); };
    const auto addNext = [&](size_t i) { Add(BoundsOf(next.steps[i], next, canvas), damage); };
    if (before == after) {
        for (size_t i = 0; i < after; ++i) {
            if (pair(i, i)) continue;
            addShown(i);
            addNext(i);
        }
    } else {
        size_t head = 0, tail = 0;
        while (head < fewer && pair(head, head)) ++head;
        while (head + tail < fewer && pair(before - 1 - tail, after - 1 - tail)) ++tail;
        for (size_t i = head; i < before - tail; ++i) addShown(i);
        for (size_t i = head; i < after - tail; ++i) addNext(i);
    }
    PullApart(damage);
    GrowAroundSteps(next, canvas, damage);
    return damage;
}
