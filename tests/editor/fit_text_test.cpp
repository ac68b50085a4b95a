#include "editor/fit_text.h"

#include "doctest/doctest.h"

// The headless text output gives every character half of the height: 10 pixels here.
constexpr TextFont kFont{20, 400};

TEST_CASE("a text that fits stays as it is") {
    CHECK(ShortenMiddle(L"0123456789", 100, kFont) == L"0123456789");
    CHECK(ShortenMiddle(L"", 0, kFont).empty());
}

TEST_CASE("a text that is too wide loses its middle, and no more than it must") {
    CHECK(ShortenMiddle(L"0123456789", 99, kFont) == L"012...789");
    CHECK(ShortenMiddle(L"0123456789", 90, kFont) == L"012...789");
    CHECK(ShortenMiddle(L"0123456789", 89, kFont) == L"012...89");
    CHECK(ShortenMiddle(L"0123456789", 60, kFont) == L"01...9");
}

TEST_CASE("the first and the last character stay in the narrowest place") {
    for (const int32_t width : {49, 10, 0, -100})
        CHECK(ShortenMiddle(L"0123456789", width, kFont) == L"0...9");
    CHECK(ShortenMiddle(L"ab", 0, kFont) == L"ab");
    CHECK(ShortenMiddle(L"a", 0, kFont) == L"a");
}

TEST_CASE("a text that is too wide for its box loses its end, and no more than it must") {
    CHECK(ShortenEnd(L"0123456789", 100, kFont) == L"0123456789");
    CHECK(ShortenEnd(L"0123456789", 99, kFont) == L"012345...");
    CHECK(ShortenEnd(L"0123456789", 90, kFont) == L"012345...");
    CHECK(ShortenEnd(L"0123456789", 89, kFont) == L"01234...");
    for (const int32_t width : {39, 10, 0, -100}) CHECK(ShortenEnd(L"0123456789", width, kFont) == L"0...");
    CHECK(ShortenEnd(L"a", 0, kFont) == L"a");
    CHECK(ShortenEnd(L"", 0, kFont).empty());
}

TEST_CASE("no surrogate pair is cut in two") {
    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    const std::wstring text = pair + pair + pair + pair + pair;
    for (int32_t width = 0; width <= 110; ++width) {
        const std::wstring shown = ShortenMiddle(text, width, kFont);
        CAPTURE(width);
        for (size_t i = 0; i < shown.size(); ++i) {
            if (shown[i] == pair[0]) CHECK(shown.at(i + 1) == pair[1]);
            if (shown[i] == pair[1]) CHECK((i > 0 && shown[i - 1] == pair[0]));
        }
    }
}

TEST_CASE("the end of a text that fits is as long as possible and begins with no half of a pair") {
    CHECK(EndThatFits(L"0123456789", 100, kFont) == L"0123456789");
    CHECK(EndThatFits(L"0123456789", 99, kFont) == L"123456789");
    CHECK(EndThatFits(L"0123456789", 30, kFont) == L"789");
    CHECK(EndThatFits(L"0123456789", 9, kFont).empty());

    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    CHECK(EndThatFits(pair + pair + pair, 59, kFont) == pair + pair);
    CHECK(EndThatFits(pair + L"abc" + pair, 59, kFont) == L"abc" + pair);
    CHECK(EndThatFits(pair + pair, 10, kFont).empty());
    CHECK(EndThatFits(pair.substr(0, 1), 9, kFont).empty());  // a half whose other half is missing
}

using Lines = std::vector<std::wstring>;

TEST_CASE("a text is wrapped between words") {
    CHECK(WrapText(L"one two three", 130, kFont) == Lines{L"one two three"});
    CHECK(WrapText(L"one two three", 129, kFont) == Lines{L"one two", L"three"});
    CHECK(WrapText(L"one two three", 70, kFont) == Lines{L"one two", L"three"});
    CHECK(WrapText(L"one two three", 69, kFont) == Lines{L"one", L"two", L"three"});
    CHECK(WrapText(L"one two six ten end", 70, kFont) == Lines{L"one two", L"six ten", L"end"});
    CHECK(WrapText(L"", 100, kFont).empty());
}

TEST_CASE("a word that is too wide has a line of its own") {
    CHECK(WrapText(L"a longer b", 30, kFont) == Lines{L"a", L"longer", L"b"});
    CHECK(WrapText(L"longer", 0, kFont) == Lines{L"longer"});
    CHECK(WrapText(L"a b", -5, kFont) == Lines{L"a", L"b"});
}
