// The program's own table of capital letters beside the system's.
#include "base/letter_case.h"

#include "doctest/doctest.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

static int32_t SystemOrder(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) -
           CSTR_EQUAL;
}

TEST_CASE("every one of the 65,536 units is compared as the system compares it") {
    std::vector<std::wstring> units;
    for (int32_t unit = 0; unit < 0x10000; ++unit) units.emplace_back(1, static_cast<wchar_t>(unit));
    for (const std::wstring& unit : units) REQUIRE(SystemOrder(unit, UpperCase(unit)) == 0);
    // In one order all neighbours compare alike, and so do all others.
    std::ranges::sort(units, NameComesBefore);
    for (size_t i = 1; i < units.size(); ++i) {
        CAPTURE(static_cast<int32_t>(units[i][0]));
        REQUIRE(SystemOrder(units[i - 1], units[i]) == CompareWithoutCase(units[i - 1], units[i]));
        REQUIRE(SystemOrder(units[i - 1], units[i]) <= 0);
    }
}

TEST_CASE("longer texts are compared as the system compares them") {
    const std::wstring texts[] = {
        L"",       L"a",      L"A",          L"ab",         L"AB!",          L"\u0161kola",
        L"Skola",  L"_",      L"z",          L"\u0160KOLA", L"\u03C3\u03C2", L"\u03A3\u03A3",
        L"\xD800", L"\uFFFD", L"\U0001F600", L"\U00010428", L"\U00010400"};
    for (const std::wstring& a : texts) {
        for (const std::wstring& b : texts) CHECK(SystemOrder(a, b) == CompareWithoutCase(a, b));
    }
}
