#include "formats/text_file.h"

#include "base/enough_memory.h"
#include "base/text_units.h"
#include "formats/other_writers.h"
#include "platform/files.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

constexpr std::string_view kUtf16Mark = "\xFF\xFE";  // little-endian
constexpr char32_t kReplacement = 0xFFFD;

static char32_t JoinSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// Takes one character that is not ASCII off the front of UTF-8 text. An invalid sequence is taken as far as
// it could have become a valid one, and gives one U+FFFD.
static char32_t TakeCharacter(const unsigned char*& next, const unsigned char* end) {
    const uint32_t lead = *next++;
    int32_t following = 0;
    uint32_t low = 0x80, high = 0xBF;  // what the second byte may be: no overlong forms, no surrogates
    if (lead >= 0xC2 && lead <= 0xDF) {
        following = 1;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        following = 2;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        following = 3;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return kReplacement;
    }

    uint32_t character = lead & (0x3Fu >> following);
    for (int32_t i = 0; i < following; ++i) {
        if (next == end || *next < low || *next > high) return kReplacement;
        character = character << 6 | (*next++ & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return character;
}

// Writes a character as one or two units. Returns where the next one goes.
static wchar_t* PutCharacter(char32_t character, wchar_t* out) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (character >= 0x10000) {
            *out++ = static_cast<wchar_t>(0xD7C0 + (character >> 10));
            *out++ = static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
            return out;
        }
    }
    *out++ = static_cast<wchar_t>(character);
    return out;
}

// Replaces `text` by the decoded bytes. No byte gives more than one unit.
static void Decode(std::string_view bytes, std::wstring& text) {
    text.resize(bytes.size());
    wchar_t* out = text.data();
    const auto* next = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = next + bytes.size();
    while (next != end) {
        if (*next < 0x80) {
            *out++ = static_cast<wchar_t>(*next++);
        } else {
            out = PutCharacter(TakeCharacter(next, end), out);
        }
    }
    text.resize(static_cast<size_t>(out - text.data()));
}

static void AppendCharacter(std::string& bytes, char32_t character) {
    const auto append = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

// Takes one character off the front of wide text, from one unit or a surrogate pair.
static char32_t TakeCharacter(std::wstring_view& text) {
    const auto unit = static_cast<char32_t>(text[0]);
    const auto second = text.size() > 1 ? static_cast<char32_t>(text[1]) : 0;
    text.remove_prefix(1);
    if (IsFirstHalf(unit) && IsSecondHalf(second)) {
        text.remove_prefix(1);
        return JoinSurrogates(unit, second);
    }
    if (IsFirstHalf(unit) || IsSecondHalf(unit) || unit > 0x10FFFF) return kReplacement;
    return unit;
}

// The ASCII characters that `text` begins with, up to `limit` or a line feed, as bytes. Returns their number.
static size_t CopyPlainRun(std::wstring_view text, char* bytes, size_t limit) {
    const size_t count = std::min(text.size(), limit);
    size_t i = 0;
    for (; i < count; ++i) {
        const auto unit = static_cast<char32_t>(text[i]);
        if (unit >= 0x80 || unit == U'\n') break;
        bytes[i] = static_cast<char>(unit);
    }
    return i;
}

// Appends wide text as UTF-8, each line feed as `lineEnd`.
static void Encode(std::wstring_view text, std::string_view lineEnd, std::string& bytes) {
    char run[1024];
    while (!text.empty()) {
        const size_t length = CopyPlainRun(text, run, sizeof run);
        bytes.append(run, length);
        text.remove_prefix(length);
        if (text.empty() || length == sizeof run) continue;
        if (text.front() == L'\n') {
            bytes += lineEnd;
            text.remove_prefix(1);
        } else {
            AppendCharacter(bytes, TakeCharacter(text));
        }
    }
}

// UTF-16, low byte first, as UTF-8. A last odd byte is U+FFFD.
static std::string Utf8FromUtf16(std::string_view bytes) {
    const auto unitAt = [bytes](size_t i) -> char32_t {
        return static_cast<unsigned char>(bytes[i]) |
               static_cast<char32_t>(static_cast<unsigned char>(bytes[i + 1])) << 8;
    };
    std::string utf8;
    utf8.reserve(bytes.size());
    size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) {
        char32_t character = unitAt(i);
        if (IsFirstHalf(character) && i + 3 < bytes.size() && IsSecondHalf(unitAt(i + 2))) {
            character = JoinSurrogates(character, unitAt(i + 2));
            i += 2;
        } else if (IsFirstHalf(character) || IsSecondHalf(character)) {
            character = kReplacement;
        }
        AppendCharacter(utf8, character);
    }
    if (i < bytes.size()) AppendCharacter(utf8, kReplacement);
    return utf8;
}

// Decodes the next line of the file, however long it is, into `line`, which NextLine then hands out in
// pieces. Line by line and not the whole file at once: wide text takes two to four times the memory of its
// bytes, and a scene may have hundreds of megabytes.
static void DecodeNextLine(TextFile& file) {
    const std::string_view rest = std::string_view(file.bytes).substr(file.nextByte);
    const size_t lineFeed = rest.find('\n');
    file.hasEnd = lineFeed != std::string_view::npos;
    file.lineByte = file.nextByte;
    std::string_view bytes = rest.substr(0, lineFeed);
    file.nextByte += bytes.size() + (file.hasEnd ? 1 : 0);
    // CR LF is one line end, and so counts once toward the buffer.
    if (file.hasEnd && bytes.ends_with('\r')) bytes.remove_suffix(1);
    Decode(bytes, file.line);
    file.nextUnit = 0;
    file.inLine = true;
}

static bool Read(const std::wstring& path, TextFile& file) {
    std::string bytes;
    if (!ReadWholeFile(path, bytes)) return false;
    const uint64_t fingerprint = Fingerprint(bytes);
    if (bytes.starts_with(kUtf16Mark)) {
        bytes = Utf8FromUtf16(std::string_view(bytes).substr(kUtf16Mark.size()));
        file = {.bytes = std::move(bytes), .fingerprint = fingerprint};
        return true;
    }
    const size_t start = bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    file = {.bytes = std::move(bytes), .nextByte = start, .fingerprint = fingerprint};
    return true;
}

bool ReadTextFile(const std::wstring& path, TextFile& file) {
    return WithEnoughMemory([&] { return Read(path, file); });
}

bool NextLine(TextFile& file, size_t bufferSize, std::wstring_view& line) {
    assert(bufferSize >= 2);
    if (!file.inLine) {
        if (file.nextByte >= file.bytes.size()) return false;
        DecodeNextLine(file);
    }

    const size_t room = bufferSize - 1;
    const size_t remaining = file.line.size() - file.nextUnit;
    line = std::wstring_view(file.line).substr(file.nextUnit, room);
    file.nextUnit += line.size();
    file.inLine = remaining + (file.hasEnd ? 1 : 0) > room;

    while (!line.empty() && (line.back() == L'\r' || line.back() == L'\n')) line.remove_suffix(1);
    return true;
}

void SplitAtTabs(std::wstring_view line, std::vector<std::wstring_view>& fields) {
    fields.clear();
    size_t tab = 0;
    while ((tab = line.find(L'\t')) != std::wstring_view::npos) {
        fields.push_back(line.substr(0, tab));
        line.remove_prefix(tab + 1);
    }
    fields.push_back(line);
}

std::string TextFileBytes(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(kUtf8Mark.size() + text.size() + text.size() / 64);
    bytes += kUtf8Mark;
    AppendTextLines(bytes, text);
    return bytes;
}

void AppendTextLines(std::string& bytes, std::wstring_view text) { Encode(text, "\r\n", bytes); }

bool WriteTextFile(const std::wstring& path, std::wstring_view text) {
    return WithEnoughMemory([&] { return WriteWholeFile(path, TextFileBytes(text)); });
}

void AppendField(std::wstring& line, std::wstring_view text) {
    const size_t start = line.size();
    line += text;
    for (size_t i = start; i < line.size(); ++i) {
        if (line[i] == L'\t' || line[i] == L'\r' || line[i] == L'\n') line[i] = L' ';
    }
}

std::string EncodeUtf8(std::wstring_view text) {
    std::string bytes;
    Encode(text, "\n", bytes);
    return bytes;
}
