// Texts that fit into a width.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A font of the interface: cell height in pixels, weight 400 or 600.
struct TextFont {
    int32_t height = 0, weight = 400;
};

// The text, or its beginning and its end with "..." in between where it is wider than `width` pixels. At
// least its first and last characters stay. Surrogate pairs are kept whole.
std::wstring ShortenMiddle(const std::wstring& text, int32_t width, TextFont font);

// The text, or its beginning with "..." where it is wider than `width` pixels. At least
// its first character stays. Surrogate pairs are kept whole.
std::wstring ShortenEnd(const std::wstring& text, int32_t width, TextFont font);

// The end of the text that fits into the width, whole where all of it does. Surrogate pairs are kept whole.
std::wstring EndThatFits(const std::wstring& text, int32_t width, TextFont font);

// The text in lines of at most `width` pixels, broken at spaces. A word that is wider has a line of its own.
std::vector<std::wstring> WrapText(const std::wstring& text, int32_t width, TextFont font);
