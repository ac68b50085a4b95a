#include "editor/fit_text.h"

#include "base/text_units.h"
#include "platform/canvas.h"

static bool Fits(const std::wstring& text, int32_t width, TextFont font) {
    return MeasureCanvasText(text, font.height, font.weight) <= width;
}

// `kept` units of the text around "...": the first half and the last half, no pair cut in two.
static std::wstring AroundDots(const std::wstring& text, size_t kept) {
    size_t head = kept - kept / 2, tail = kept / 2;
    if (head > 0 && IsFirstHalf(text[head - 1])) --head;
    if (tail > 0 && IsSecondHalf(text[text.size() - tail])) --tail;
    return text.substr(0, head) + L"..." + text.substr(text.size() - tail);
}

// Halves the range between a length that fits and one that does not: a text of 300 units is measured ten
// times and not 300 times, in every frame that shows it. Widths grow with the text, so the longest that fits
// is found.
std::wstring ShortenMiddle(const std::wstring& text, int32_t width, TextFont font) {
    if (text.size() <= 2 || Fits(text, width, font)) return text;
    size_t fits = 2, tooMany = text.size();
    while (fits + 1 < tooMany) {
        const size_t middle = (fits + tooMany) / 2;
        if (Fits(AroundDots(text, middle), width, font)) {
            fits = middle;
        } else {
            tooMany = middle;
        }
    }
    return AroundDots(text, fits);
}

std::wstring EndThatFits(const std::wstring& text, int32_t width, TextFont font) {
    size_t start = 0;
    while (start < text.size() && !Fits(text.substr(start), width, font)) {
        start += IsFirstHalf(text[start]) && start + 1 < text.size() ? 2 : 1;
    }
    return text.substr(start);
}

std::vector<std::wstring> WrapText(const std::wstring& text, int32_t width, TextFont font) {
    std::vector<std::wstring> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(L' ', start);
        for (size_t next = end; next != std::wstring::npos;) {
            next = text.find(L' ', next + 1);
            if (!Fits(text.substr(start, next == std::wstring::npos ? next : next - start), width, font))
                break;
            end = next;
        }
        lines.push_back(text.substr(start, end == std::wstring::npos ? end : end - start));
        start = end == std::wstring::npos ? text.size() : end + 1;
    }
    return lines;
}
