#include "blueprint/canvas_cover.h"

#include <algorithm>

constexpr int32_t kWordBits = 64;

namespace {

// The words of a row that some columns touch, and the columns' bits in the outer two.
struct ColumnBits {
    size_t first = 0, last = 0;
    uint64_t firstMask = 0, lastMask = 0;
};

}  // namespace

// `left` < `right`, both counted from the area's left edge.
static ColumnBits BitsOf(int32_t left, int32_t right) {
    return {.first = static_cast<size_t>(left / kWordBits),
            .last = static_cast<size_t>((right - 1) / kWordBits),
            .firstMask = ~uint64_t{0} << (left % kWordBits),
            .lastMask = ~uint64_t{0} >> (kWordBits - 1 - (right - 1) % kWordBits)};
}

static uint64_t MaskOf(const ColumnBits& bits, size_t word) {
    uint64_t mask = ~uint64_t{0};
    if (word == bits.first) mask &= bits.firstMask;
    if (word == bits.last) mask &= bits.lastMask;
    return mask;
}

// The part of a rectangle inside the area, counted from the area's corner. Empty without one.
static Rect PartInside(const Rect& area, const Rect& rect) {
    const Rect part{std::max(rect.left, area.left) - area.left, std::max(rect.top, area.top) - area.top,
                    std::min(rect.right, area.right) - area.left,
                    std::min(rect.bottom, area.bottom) - area.top};
    return Width(part) > 0 && Height(part) > 0 ? part : Rect{};
}

CanvasCover StartCover(const Rect& area) {
    const auto columns = static_cast<size_t>(std::max(Width(area), 0));
    const auto rows = static_cast<size_t>(std::max(Height(area), 0));
    const size_t wordsPerRow = (columns + kWordBits - 1) / kWordBits;
    return {area, wordsPerRow, std::vector<uint64_t>(wordsPerRow * rows)};
}

bool IsCovered(const CanvasCover& cover, const Rect& rect) {
    const Rect part = PartInside(cover.area, rect);
    if (part == Rect{}) return true;
    const ColumnBits bits = BitsOf(part.left, part.right);
    for (int32_t y = part.top; y < part.bottom; ++y) {
        const uint64_t* row = cover.words.data() + static_cast<size_t>(y) * cover.wordsPerRow;
        for (size_t word = bits.first; word <= bits.last; ++word) {
            if ((MaskOf(bits, word) & ~row[word]) != 0) return false;
        }
    }
    return true;
}

void Cover(CanvasCover& cover, const Rect& rect) {
    const Rect part = PartInside(cover.area, rect);
    if (part == Rect{}) return;
    const ColumnBits bits = BitsOf(part.left, part.right);
    for (int32_t y = part.top; y < part.bottom; ++y) {
        uint64_t* row = cover.words.data() + static_cast<size_t>(y) * cover.wordsPerRow;
        for (size_t word = bits.first; word <= bits.last; ++word) row[word] |= MaskOf(bits, word);
    }
}
