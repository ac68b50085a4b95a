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

static std::wstring BeforeDots(const std::wstring& text, size_t kept) {
    if (kept > 0 && IsFirstHalf(text[kept - 1])) --kept;
    return text.substr(0, kept) + L"...";
}

// The longest form of the text that fits, at least `fits` units of it. Halves the range between a length that
// fits and one that does not: a text of 300 units is measured ten times and not 300 times, in every frame
// that shows it. Widths grow with the text, so the longest that fits is found.
static std::wstring LongestThatFits(const std::wstring& text, int32_t width, TextFont font, size_t fits,
                                    std::wstring (*shorten)(const std::wstring&, size_t)) {
    size_t tooMany = text.size();
    while (fits + 1 < tooMany) {
        const size_t middle = (fits + tooMany) / 2;
        if (Fits(shorten(text, middle), width, font)) {
            fits = middle;
        } else {
            tooMany = middle;
        }
    }
    return shorten(text, fits);
}

std::wstring ShortenMiddle(const std::wstring& text, int32_t width, TextFont font) {
    if (text.size() <= 2 || Fits(text, width, font)) return text;
    return LongestThatFits(text, width, font, 2, AroundDots);
}

// Most texts are a few letters in a box for many. No letter is wider than its cell is high, so that those
// need not be measured.
std::wstring ShortenEnd(const std::wstring& text, int32_t width, TextFont font) {
    const bool surelyFits = static_cast<int64_t>(text.size()) * font.height <= width;
    if (surelyFits || text.size() <= 1 || Fits(text, width, font)) return text;
    return LongestThatFits(text, width, font, 1, BeforeDots);
}

std::wstring EndThatFits(const std::wstring& text, int32_t width, TextFont font) {
    size_t start = 0;
    while (start < text.size() && !Fits(text.substr(start), width, font)) {
        start += IsFirstHalf(text[start]) && start + 1 < text.size() ? 2 : 1;
    }
    return text.substr(start);
}

// Takes as many words into a line as fit, at least one: a word that is too long by itself sticks out rather
// than being cut.
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
