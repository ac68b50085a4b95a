#include "base/letter_case.h"

#include "doctest/doctest.h"
#include "support/capture.h"

#include <cstdint>
#include <string>

TEST_CASE("letters of every script become capitals") {
    struct {
        const wchar_t *small, *capital;
    } cases[] = {
        {L"az", L"AZ"},
        {L"\u0161\u010D\u0159\u017E\u00FD\u016F", L"\u0160\u010C\u0158\u017D\u00DD\u016E"},  // Czech
        {L"\u00E4\u00F6\u00FC\u00FF", L"\u00C4\u00D6\u00DC\u0178"},                          // Latin
        {L"\u0142\u0219\u01A1\u1EBF", L"\u0141\u0218\u01A0\u1EBE"},
        {L"\u03B1\u03C3\u03C9\u03AC\u1F00", L"\u0391\u03A3\u03A9\u0386\u1F08"},  // Greek
        {L"\u0430\u044F\u0451\u0491", L"\u0410\u042F\u0401\u0490"},              // Cyrillic
        {L"\u0561\u0586", L"\u0531\u0556"},                                      // Armenian
        {L"\u2D00\u10D0", L"\u10A0\u1C90"},                                      // Georgian
        {L"\uFF41\uFF5A", L"\uFF21\uFF3A"},                                      // full width
        {L"\u2170\u24D0", L"\u2160\u24B6"},                                      // numbers, circles
    };
    for (const auto& [small, capital] : cases) {
        CHECK(UpperCase(small) == capital);
        CHECK(UpperCase(capital) == capital);
        CHECK(SameWithoutCase(small, capital));
    }
}

TEST_CASE("a unit without a capital of its own stays") {
    for (const wchar_t* text : {L"", L" 1_.[{", L"\u00DF", L"\u0131", L"\u017F", L"\u00B5", L"\u03C2",
                                L"\u01C5", L"\u5B57", L"\uFFFF", L"\u2126", L"\U0001F600", L"\U00010428"}) {
        CHECK(UpperCase(text) == text);
    }
    CHECK_FALSE(SameWithoutCase(L"\u00DF", L"ss"));
    CHECK_FALSE(SameWithoutCase(L"\u0131", L"i"));
    CHECK_FALSE(SameWithoutCase(L"k", L"\u212A"));  // the Kelvin sign
}

TEST_CASE("texts are compared by their capitals, and a shorter one comes first") {
    // In the order of the list, each before the next.
    const wchar_t* ordered[] = {L"",  L"!",      L"A",       L"a!",     L"aB",         L"b",     L"Z",
                                L"_", L"\u010D", L"\u0160a", L"\u5B57", L"\U0001F600", L"\uFF21"};
    for (const wchar_t* const& a : ordered) {
        for (const wchar_t* const& b : ordered) {
            CHECK(CompareWithoutCase(a, b) == (&a < &b ? -1 : &a > &b ? 1 : 0));
            CHECK(NameComesBefore(a, b) == (&a < &b));
        }
    }
}

TEST_CASE("names that differ in case only have an order too") {
    CHECK(CompareWithoutCase(L"aB", L"Ab") == 0);
    CHECK(NameComesBefore(L"Ab", L"aB"));
    CHECK_FALSE(NameComesBefore(L"aB", L"Ab"));
    CHECK_FALSE(NameComesBefore(L"aB", L"aB"));
    CHECK(NameComesBefore(L"a", L"AA"));
}

// Counted by another program, from the simple mappings of Unicode 14 that lead there and back.
TEST_CASE(
    "every block of 256 units has as many letters with a capital as in Unicode, and the same capitals") {
    struct {
        int32_t block, letters;
        int64_t sum;  // of their capitals
    } cases[] = {
        {0x00, 57, 8593},    {0x01, 109, 41681},   {0x02, 71, 546715},  {0x03, 56, 52992},
        {0x04, 124, 141565}, {0x05, 62, 82477},    {0x10, 46, 337393},  {0x13, 6, 30639},
        {0x1D, 3, 97190},    {0x1E, 123, 960126},  {0x1F, 96, 773568},  {0x21, 18, 153901},
        {0x24, 26, 244673},  {0x2C, 109, 1217726}, {0x2D, 40, 171027},  {0xA6, 37, 1576304},
        {0xA7, 73, 3129544}, {0xAB, 81, 448011},   {0xFF, 26, 1698463},
    };
    int32_t letters = 0;
    for (const auto& [block, expected, expectedSum] : cases) {
        CAPTURE(block);
        int32_t count = 0;
        int64_t sum = 0;
        for (int32_t unit = block * 256; unit < block * 256 + 256; ++unit) {
            const wchar_t capital = UpperCase(std::wstring(1, static_cast<wchar_t>(unit)))[0];
            if (capital == static_cast<wchar_t>(unit)) continue;
            ++count;
            sum += capital;
        }
        CHECK(count == expected);
        CHECK(sum == expectedSum);
        letters += count;
    }
    for (int32_t unit = 0; unit < 0x10000; ++unit) {
        if (UpperCase(std::wstring(1, static_cast<wchar_t>(unit)))[0] != static_cast<wchar_t>(unit))
            --letters;
    }
    CHECK(letters == 0);  // the other blocks have none
}
