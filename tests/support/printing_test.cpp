// What a failed check shows of the values that it compared.
#include "support/printing.h"

#include "base/matrix4.h"
#include "platform/headless/headless.h"
#include "state/game_object.h"

#include "doctest/doctest.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

template <typename T>
static std::string Shown(const T& value) {
    using doctest::toString;
    return toString(value).c_str();
}

TEST_CASE("a wide text is shown in quotes, letter by letter") {
    CHECK(Shown(std::wstring(L"Objekt byl smaz\u00E1n.")) == "\"Objekt byl smaz\xC3\xA1n.\"");
    CHECK(Shown(std::wstring_view(L"\u20AC")) == "\"\xE2\x82\xAC\"");
    CHECK(Shown(std::wstring(L"\U0001F600")) == "\"\xF0\x9F\x98\x80\"");
    CHECK(Shown(std::wstring(L"a\tb\r\n\"c\\")) == R"("a\tb\r\n\"c\\")");
    CHECK(Shown(std::wstring(L"\x1B")) == R"("\x001B")");
    CHECK(Shown(std::wstring(1, static_cast<wchar_t>(0xD801))) == R"("\xD801")");
    const wchar_t* text = L"pointer";
    CHECK(Shown(text) == "\"pointer\"");
    CHECK(Shown(L"array") == "\"array\"");
    CHECK(Shown(L'x') == "\"x\"");
}

TEST_CASE("a colour is shown as it is written in the sources") {
    CHECK(Shown(Pixel{0x251F1C}) == "0x00251F1C");
    CHECK(Shown(TextColor{0xE6EEEB}) == "0x00E6EEEB");
}

TEST_CASE("a record is shown field by field, and records within it too") {
    CHECK(Shown(Point{3, -4}) == "{3, -4}");
    CHECK(Shown(Rect{1, 2, 3, 4}) == "{1, 2, 3, 4}");
    CHECK(Shown(DrawnImage{L"a.png", {1, 2, 3, 4}}) == R"({"a.png", {1, 2, 3, 4}})");
    CHECK(Shown(DrawnText{5, 6, L"Mass", TextColor{0xFF}, 15, 700}) ==
          R"({5, 6, "Mass", 0x000000FF, 15, 700})");
    CHECK(Shown(Matrix4{}).find('?') == std::string::npos);
}

TEST_CASE("a list is shown with its size and its elements") {
    CHECK(Shown(std::vector<std::wstring>{L"a", L"b"}) == R"(2: ["a", "b"])");
    CHECK(Shown(std::vector<Point>{}) == "0: []");
    const std::array<int32_t, 3> numbers{1, 2, 3};
    CHECK(Shown(numbers) == "3: [1, 2, 3]");
    CHECK(Shown(std::span<const int32_t>(numbers)) == "3: [1, 2, 3]");
    CHECK(Shown(std::optional<Point>{{1, 2}}) == "{1, 2}");
    CHECK(Shown(std::optional<Point>{}) == "nothing");
}

TEST_CASE("an object is shown as its line in a scene") {
    GameObject object;
    object.name = L"Crate";
    CHECK(Shown(object).starts_with(R"("O\tCrate\t)"));
}
