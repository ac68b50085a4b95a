// How doctest prints the values of this program when a check fails: wide texts, colours, lists, and records
// field by field. CMake includes this in every source of the unit tests, so that all of them print alike.
#pragma once

#include "doctest/doctest.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

enum class Pixel : uint32_t;
enum class TextColor : uint32_t;
struct GameObject;

// In quotes, as UTF-8; with "\t", "\r", "\n", "\\" and "\"", and other control characters and halves of
// surrogate pairs as "\x001B".
std::string Quoted(std::wstring_view text);

// As they are written in the sources, 0x00RRGGBB and 0x00BBGGRR.
doctest::String toString(Pixel color);
doctest::String toString(TextColor color);

namespace printing {

// Takes the place of any field while fields are counted. Never called.
struct AnyField {
    template <typename T>
    operator T() const;
};

template <typename T, typename... Fields>
constexpr size_t FieldCount() {
    if constexpr (requires { T{Fields{}..., AnyField{}}; }) {
        return FieldCount<T, Fields..., AnyField>();
    } else {
        return sizeof...(Fields);
    }
}

template <typename T>
concept Streamed = requires(std::ostream& stream, const T& value) {
    stream << value;
};

template <typename T>
concept List = !Streamed<T> && !std::is_array_v<T> && requires(const T& value) {
    value.begin();
    value.end();
};

// A plain record of at most eight fields, none of which is an array of C.
template <typename T>
concept Record = std::is_class_v<T> && std::is_aggregate_v<T> && !Streamed<T> && !List<T> &&
                 (FieldCount<T>() >= 1 && FieldCount<T>() <= 8);

template <typename... Fields>
doctest::String InBraces(const Fields&... fields) {
    using doctest::toString;  // and those of the colours
    doctest::String text = "{";
    size_t printed = 0;
    ((text += toString(fields), text += ++printed < sizeof...(fields) ? ", " : "}"), ...);
    return text;
}

template <Record T>
doctest::String Printed(const T& record) {
    constexpr size_t count = FieldCount<T>();
    if constexpr (count == 1) {
        const auto& [a] = record;
        return InBraces(a);
    } else if constexpr (count == 2) {
        const auto& [a, b] = record;
        return InBraces(a, b);
    } else if constexpr (count == 3) {
        const auto& [a, b, c] = record;
        return InBraces(a, b, c);
    } else if constexpr (count == 4) {
        const auto& [a, b, c, d] = record;
        return InBraces(a, b, c, d);
    } else if constexpr (count == 5) {
        const auto& [a, b, c, d, e] = record;
        return InBraces(a, b, c, d, e);
    } else if constexpr (count == 6) {
        const auto& [a, b, c, d, e, f] = record;
        return InBraces(a, b, c, d, e, f);
    } else if constexpr (count == 7) {
        const auto& [a, b, c, d, e, f, g] = record;
        return InBraces(a, b, c, d, e, f, g);
    } else {
        const auto& [a, b, c, d, e, f, g, h] = record;
        return InBraces(a, b, c, d, e, f, g, h);
    }
}

}  // namespace printing

namespace doctest {

template <>
struct StringMaker<std::wstring> {
    static String convert(const std::wstring& text) { return Quoted(text).c_str(); }
};

template <>
struct StringMaker<std::wstring_view> {
    static String convert(std::wstring_view text) { return Quoted(text).c_str(); }
};

template <>
struct StringMaker<const wchar_t*> {
    static String convert(const wchar_t* text) { return text == nullptr ? "null" : Quoted(text).c_str(); }
};

template <size_t n>
struct StringMaker<wchar_t[n]> {
    static String convert(const wchar_t (&text)[n]) { return Quoted(text).c_str(); }
};

template <size_t n>
struct StringMaker<const wchar_t[n]> : StringMaker<wchar_t[n]> {};

template <>
struct StringMaker<wchar_t> {
    static String convert(wchar_t letter) { return Quoted({&letter, 1}).c_str(); }
};

template <typename T>
struct StringMaker<std::optional<T>> {
    static String convert(const std::optional<T>& value) { return value ? toString(*value) : "nothing"; }
};

template <typename A, typename B>
struct StringMaker<std::pair<A, B>> {
    static String convert(const std::pair<A, B>& pair) { return printing::InBraces(pair.first, pair.second); }
};

// Its size, and all of its elements.
template <printing::List T>
struct StringMaker<T> {
    static String convert(const T& list) {
        String text = toString(std::distance(list.begin(), list.end()));
        text += ": [";
        bool isFirst = true;
        for (const auto& element : list) {
            if (!isFirst) text += ", ";
            isFirst = false;
            text += toString(element);
        }
        return text + "]";
    }
};

template <printing::Record T>
struct StringMaker<T> {
    static String convert(const T& record) { return printing::Printed(record); }
};

// Its line in a scene file.
template <>
struct StringMaker<GameObject> {
    static String convert(const GameObject& object);
};

}  // namespace doctest
