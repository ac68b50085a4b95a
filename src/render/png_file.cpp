#include "render/png_file.h"

#include "render/inflate.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <utility>

constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
constexpr size_t kHeaderSize = 13, kPixelBytes = 4;
constexpr uint32_t kLongestSide = 1024;  // pixels
// 8 bits, red, green, blue and alpha; the only compression and filter methods; rows in order.
constexpr std::string_view kForm("\x08\x06\x00\x00\x00", 5);
// Chunks that do not change pixels: background hint, texts, time, size of a pixel.
constexpr std::string_view kIgnored[] = {"bKGD", "tEXt", "zTXt", "iTXt", "tIME", "pHYs"};

namespace {

struct Chunk {
    std::string_view type{}, data{};
};

struct Header {
    uint32_t width = 0, height = 0;
};

}  // namespace

static uint32_t Number(std::string_view bytes) {
    uint32_t value = 0;
    for (const char byte : bytes.substr(0, 4)) value = value << 8 | static_cast<uint8_t>(byte);
    return value;
}

static constexpr std::array<uint32_t, 256> MakeCrcTable() {
    std::array<uint32_t, 256> table{};
    for (uint32_t i = 0; i < 256; ++i) {
        uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit) value = value & 1 ? value >> 1 ^ 0xEDB88320u : value >> 1;
        table[i] = value;
    }
    return table;
}

static uint32_t Crc(std::string_view bytes) {
    static constexpr std::array<uint32_t, 256> kTable = MakeCrcTable();
    uint32_t crc = 0xFFFFFFFFu;
    for (const char byte : bytes) crc = kTable[(crc ^ static_cast<uint8_t>(byte)) & 0xFF] ^ crc >> 8;
    return ~crc;
}

// Takes a chunk off the front of `bytes`: length, type, data, and a check sum of type and data.
static bool TakeChunk(std::string_view& bytes, Chunk& chunk) {
    if (bytes.size() < 12) return false;
    const size_t length = Number(bytes);
    if (length > bytes.size() - 12) return false;
    if (Crc(bytes.substr(4, 4 + length)) != Number(bytes.substr(8 + length))) return false;
    chunk = {bytes.substr(4, 4), bytes.substr(8, length)};
    bytes.remove_prefix(12 + length);
    return true;
}

static bool ReadHeader(const Chunk& chunk, Header& header) {
    if (chunk.type != "IHDR" || chunk.data.size() != kHeaderSize || chunk.data.substr(8) != kForm)
        return false;
    header = {Number(chunk.data), Number(chunk.data.substr(4))};
    const auto isSide = [](uint32_t side) { return side >= 1 && side <= kLongestSide; };
    return isSide(header.width) && isSide(header.height);
}

// Joins the data of all IDAT chunks, which must follow each other. A chunk that is not known to leave pixels
// alone ends the reading: the system may understand it.
static bool JoinData(std::string_view bytes, std::string& data) {
    bool hasEnded = false;
    for (Chunk chunk; TakeChunk(bytes, chunk);) {
        if (chunk.type == "IEND") return bytes.empty();
        if (chunk.type == "IDAT") {
            if (hasEnded) return false;
            data += chunk.data;
            continue;
        }
        if (std::ranges::find(kIgnored, chunk.type) == std::end(kIgnored)) return false;
        hasEnded = !data.empty();
    }
    return false;
}

// Whichever of left, above and above left is nearest to left + above - above left. On a tie the first of
// these three.
static int32_t Nearest(int32_t left, int32_t above, int32_t aboveLeft) {
    const int32_t guess = left + above - aboveLeft;
    const int32_t toLeft = std::abs(guess - left), toAbove = std::abs(guess - above),
                  toAboveLeft = std::abs(guess - aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft) return left;
    return toAbove <= toAboveLeft ? above : aboveLeft;
}

// What the filter of a row predicts for a byte. -1 for an unknown filter.
static int32_t Expected(uint8_t filter, int32_t left, int32_t above, int32_t aboveLeft) {
    switch (filter) {
        case 0: return 0;
        case 1: return left;
        case 2: return above;
        case 3: return (left + above) / 2;
        case 4: return Nearest(left, above, aboveLeft);
        default: return -1;
    }
}

// In go rows that hold a filter and then differences from what the filter predicts; out come the bytes, in
// place. Predictions use bytes that are already restored, so it goes from the top left, byte by byte.
static bool Unfilter(const Header& header, std::string& bytes) {
    const size_t pitch = 1 + header.width * kPixelBytes;
    for (size_t row = 0; row < header.height; ++row) {
        const size_t begin = row * pitch;
        const auto filter = static_cast<uint8_t>(bytes[begin]);
        for (size_t i = 1; i < pitch; ++i) {
            const size_t at = begin + i;
            const auto byte = [&bytes](size_t index) { return int32_t{static_cast<uint8_t>(bytes[index])}; };
            const bool hasLeft = i > kPixelBytes, hasAbove = row > 0;
            const int32_t expected =
                Expected(filter, hasLeft ? byte(at - kPixelBytes) : 0, hasAbove ? byte(at - pitch) : 0,
                         hasLeft && hasAbove ? byte(at - pitch - kPixelBytes) : 0);
            if (expected < 0) return false;
            bytes[at] = static_cast<char>(byte(at) + expected);
        }
    }
    return true;
}

static DecodedImage ImageOf(const Header& header, std::string_view rows) {
    DecodedImage image{.width = static_cast<int32_t>(header.width),
                       .height = static_cast<int32_t>(header.height)};
    image.argb.reserve(size_t{header.width} * header.height);
    for (uint32_t y = 0; y < header.height; ++y) {
        rows.remove_prefix(1);
        for (uint32_t x = 0; x < header.width; ++x) {
            const uint32_t rgba = Number(rows);
            image.argb.push_back(rgba >> 8 | rgba << 24);
            rows.remove_prefix(kPixelBytes);
        }
    }
    return image;
}

// Signature, header, compressed rows, filters, pixels: each stage refuses what it does not know, and the
// image is only assigned when the last one has succeeded.
bool ReadPngFile(std::string_view bytes, DecodedImage& image) {
    if (!bytes.starts_with(kSignature)) return false;
    bytes.remove_prefix(kSignature.size());
    Chunk first;
    Header header;
    if (!TakeChunk(bytes, first) || !ReadHeader(first, header)) return false;

    std::string data, rows;
    if (!JoinData(bytes, data)) return false;
    if (!Inflate(data, header.height * (1 + header.width * kPixelBytes), rows)) return false;
    if (!Unfilter(header, rows)) return false;
    image = ImageOf(header, rows);
    return true;
}
