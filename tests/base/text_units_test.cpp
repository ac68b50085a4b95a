#include "base/text_units.h"

#include "doctest/doctest.h"

static std::wstring Typed(const std::wstring& units, size_t limit, std::wstring text = {}) {
    wchar_t half = 0;
    for (const wchar_t unit : units) AppendTyped(unit, limit, half, text);
    return text;
}

// The halves of U+1F600 as Windows sends them.
constexpr wchar_t kFirst = 0xD83D, kSecond = 0xDE00;
static const std::wstring kPair{kFirst, kSecond};

TEST_CASE("letters of every kind are typed, control characters are not") {
    CHECK(Typed(L"Příliš žluťoučký kůň", 80) == L"Příliš žluťoučký kůň");
    CHECK(Typed(L"a\t\n\x1b\x7f\x1f b", 80) == L"a b");
}

TEST_CASE("typed characters beyond the limit are dropped") {
    CHECK(Typed(L"abcd", 3) == L"abc");
    CHECK(Typed(L"x", 3, L"longer") == L"longer");
}

TEST_CASE("the halves of a pair are appended together or not at all") {
    CHECK(Typed(kPair, 2) == kPair);
    CHECK(Typed(kPair, 1) == L"");
    CHECK(Typed(L"ab" + kPair + L"c", 3) == L"abc");
    CHECK(Typed({kFirst}, 80) == L"");
    CHECK(Typed({kSecond}, 80) == L"");
    CHECK(Typed({kFirst, L'a', kSecond}, 80) == L"a");
    CHECK(Typed({kFirst, kFirst, kSecond}, 80) == kPair);
    CHECK(Typed({kFirst, kSecond, kSecond}, 80) == kPair);
}

TEST_CASE("the halves of a pair are removed together") {
    std::wstring text = L"a" + kPair;
    EraseLastCharacter(text);
    CHECK(text == L"a");
    EraseLastCharacter(text);
    EraseLastCharacter(text);
    CHECK(text == L"");
}

TEST_CASE("half of a pair, as a file may hold it, is removed alone") {
    std::wstring text{L'a', kSecond};
    EraseLastCharacter(text);
    CHECK(text == L"a");
}

TEST_CASE("spaces at both ends are trimmed and tabs are not") {
    CHECK(TrimSpaces(L"  a b  ") == L"a b");
    CHECK(TrimSpaces(L" \ta ") == L"\ta");
    CHECK(TrimSpaces(L"   ") == L"");
    CHECK(TrimSpaces(L"") == L"");
}
