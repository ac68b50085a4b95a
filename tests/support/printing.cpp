#include "support/printing.h"

#include <cstdio>

static bool IsIn(char32_t letter, char32_t first, char32_t last) { return letter >= first && letter <= last; }

// Bytes of UTF-8 for a character that is no surrogate.
static void AppendUtf8(std::string& bytes, char32_t letter) {
    const auto tail = [&](int32_t bits) { bytes += static_cast<char>(0x80 | ((letter >> bits) & 0x3F)); };
    if (letter < 0x80) {
        bytes += static_cast<char>(letter);
    } else if (letter < 0x800) {
        bytes += static_cast<char>(0xC0 | (letter >> 6));
        tail(0);
    } else if (letter < 0x10000) {
        bytes += static_cast<char>(0xE0 | (letter >> 12));
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xF0 | (letter >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

static std::string Hexadecimal(const char* format, uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, format, static_cast<unsigned>(value));
    return text;
}

std::string Quoted(std::wstring_view text) {
    std::string quoted = "\"";
    for (size_t i = 0; i < text.size(); ++i) {
        auto letter = static_cast<char32_t>(text[i]);
        const char32_t next = i + 1 < text.size() ? static_cast<char32_t>(text[i + 1]) : 0;
        if (IsIn(letter, 0xD800, 0xDBFF) && IsIn(next, 0xDC00, 0xDFFF)) {
            letter = 0x10000 + ((letter - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        }
        if (letter == L'\t') {
            quoted += "\\t";
        } else if (letter == L'\r') {
            quoted += "\\r";
        } else if (letter == L'\n') {
            quoted += "\\n";
        } else if (letter == L'\\' || letter == L'"') {
            quoted += '\\';
            quoted += static_cast<char>(letter);
        } else if (letter < 0x20 || IsIn(letter, 0xD800, 0xDFFF) || letter > 0x10FFFF) {
            quoted += Hexadecimal("\\x%04X", letter);
        } else {
            AppendUtf8(quoted, letter);
        }
    }
    return quoted + "\"";
}

doctest::String toString(Pixel color) { return Hexadecimal("0x%08X", static_cast<uint32_t>(color)).c_str(); }

doctest::String toString(TextColor color) {
    return Hexadecimal("0x%08X", static_cast<uint32_t>(color)).c_str();
}
