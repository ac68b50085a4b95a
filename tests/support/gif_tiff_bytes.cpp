#include "support/gif_tiff_bytes.h"

#include <algorithm>

static void AppendNumber(std::string& bytes, uint32_t value, int32_t count, bool isBigEndian = false) {
    for (int32_t i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(value >> 8 * (isBigEndian ? count - 1 - i : i)));
    }
}

static void AppendColor(std::string& bytes, uint32_t pixel) { AppendNumber(bytes, pixel, 3, true); }

// Codes of three bits, the first in the low bits. The table is emptied before each pair of pixels, so that it
// never grows to codes of four.
static std::string GifCodes(const std::vector<uint32_t>& colors) {
    constexpr uint32_t kClear = 4, kEnd = 5;
    std::vector<uint32_t> codes;
    for (size_t i = 0; i < colors.size(); ++i) {
        if (i % 2 == 0) codes.push_back(kClear);
        codes.push_back(colors[i]);
    }
    codes.push_back(kEnd);
    std::string bytes((codes.size() * 3 + 7) / 8, '\0');
    for (size_t bit = 0; bit < codes.size() * 3; ++bit) {
        if (codes[bit / 3] >> bit % 3 & 1) bytes[bit / 8] = static_cast<char>(bytes[bit / 8] | 1 << bit % 8);
    }
    return bytes;
}

std::string GifFile(int32_t width, int32_t height, const std::vector<uint32_t>& pixels) {
    std::vector<uint32_t> table = pixels;
    std::ranges::sort(table);
    table.erase(std::unique(table.begin(), table.end()), table.end());
    table.resize(4);

    std::string gif = "GIF89a";
    AppendNumber(gif, static_cast<uint32_t>(width), 2);
    AppendNumber(gif, static_cast<uint32_t>(height), 2);
    AppendNumber(gif, 0x91, 3);  // a table of four colours
    for (const uint32_t color : table) AppendColor(gif, color);
    gif += ',';
    AppendNumber(gif, 0, 4);  // its place
    AppendNumber(gif, static_cast<uint32_t>(width), 2);
    AppendNumber(gif, static_cast<uint32_t>(height), 2);
    AppendNumber(gif, 0, 1);
    AppendNumber(gif, 2, 1);  // bits of a pixel

    std::vector<uint32_t> colors;
    for (const uint32_t pixel : pixels)
        colors.push_back(static_cast<uint32_t>(std::ranges::find(table, pixel) - table.begin()));
    const std::string codes = GifCodes(colors);
    for (size_t at = 0; at < codes.size(); at += 255) {
        const std::string block = codes.substr(at, 255);
        AppendNumber(gif, static_cast<uint32_t>(block.size()), 1);
        gif += block;
    }
    AppendNumber(gif, 0, 1);
    return gif + ';';
}

std::string TiffFile(int32_t width, int32_t height, const std::vector<uint32_t>& pixels, bool isBigEndian) {
    constexpr uint32_t kShort = 3, kLong = 4;
    struct {
        uint32_t tag, type, count, value;
    } entries[] = {{256, kLong, 1, static_cast<uint32_t>(width)},
                   {257, kShort, 1, static_cast<uint32_t>(height)},
                   {258, kShort, 3, 8 + 2 + 9 * 12 + 4},  // where the three stand
                   {259, kShort, 1, 1},                   // no compression
                   {262, kShort, 1, 2},                   // red, green, blue
                   {273, kLong, 1, 8 + 2 + 9 * 12 + 4 + 6},
                   {277, kShort, 1, 3},
                   {278, kShort, 1, static_cast<uint32_t>(height)},
                   {279, kLong, 1, static_cast<uint32_t>(pixels.size()) * 3}};
    static_assert(std::size(entries) == 9);

    std::string tiff = isBigEndian ? "MM" : "II";
    const auto append = [&](uint32_t value, int32_t count) { AppendNumber(tiff, value, count, isBigEndian); };
    append(42, 2);
    append(8, 4);
    append(9, 2);
    for (const auto& [tag, type, count, value] : entries) {
        append(tag, 2);
        append(type, 2);
        append(count, 4);
        const bool isShort = type == kShort && count == 1;
        append(value, isShort ? 2 : 4);
        if (isShort) append(0, 2);
    }
    append(0, 4);
    for (int32_t i = 0; i < 3; ++i) append(8, 2);
    for (const uint32_t pixel : pixels) AppendColor(tiff, pixel);
    return tiff;
}
