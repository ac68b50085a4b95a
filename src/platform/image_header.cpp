#include "platform/image_header.h"

#include <cstddef>

using namespace std::string_view_literals;

// Whole numbers of 1 to 4 bytes; 0 beyond the end.

static int64_t BigEndian(std::string_view bytes, size_t at, size_t count) {
    if (at > bytes.size() || count > bytes.size() - at) return 0;
    int64_t value = 0;
    for (size_t i = 0; i < count; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

static int64_t LittleEndian(std::string_view bytes, size_t at, size_t count) {
    if (at > bytes.size() || count > bytes.size() - at) return 0;
    int64_t value = 0;
    for (size_t i = count; i > 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
    return value;
}

static bool ReadPngSize(std::string_view bytes, ImageSize& size) {
    constexpr size_t kWidth = 16, kHeight = 20, kEnd = 24;  // in the first chunk, which is IHDR
    if (bytes.size() < kEnd || bytes.substr(12, 4) != "IHDR") return false;
    size = {BigEndian(bytes, kWidth, 4), BigEndian(bytes, kHeight, 4)};
    return true;
}

static bool ReadBmpSize(std::string_view bytes, ImageSize& size) {
    constexpr size_t kHeader = 14, kSides = 18, kEnd = 26;
    constexpr int64_t kOldHeader = 12;  // its length; sides of 16 bits
    if (bytes.size() < kEnd) return false;
    if (LittleEndian(bytes, kHeader, 4) == kOldHeader) {
        size = {LittleEndian(bytes, kSides, 2), LittleEndian(bytes, kSides + 2, 2)};
        return true;
    }
    const auto side = [bytes](size_t at) -> int64_t {
        return static_cast<int32_t>(static_cast<uint32_t>(LittleEndian(bytes, at, 4)));
    };
    const int64_t height = side(kSides + 4);
    size = {side(kSides), height < 0 ? -height : height};  // negative: rows from the top
    return true;
}

// The markers that begin a frame; the others of their range are tables.
static bool IsFrameMarker(int64_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Markers without a segment behind them.
static bool StandsAlone(int64_t marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8); }

static bool ReadJpegSize(std::string_view bytes, ImageSize& size) {
    size_t at = 2;
    while (at + 4 <= bytes.size()) {
        if (BigEndian(bytes, at, 1) != 0xFF) return false;
        const int64_t marker = BigEndian(bytes, at + 1, 1);
        if (marker == 0xFF) {  // markers may be padded
            ++at;
            continue;
        }
        if (StandsAlone(marker)) {
            at += 2;
            continue;
        }
        constexpr size_t kHeight = 5, kWidth = 7, kEnd = 9;  // from the marker on
        if (IsFrameMarker(marker)) {
            if (at + kEnd > bytes.size()) return false;
            size = {BigEndian(bytes, at + kWidth, 2), BigEndian(bytes, at + kHeight, 2)};
            return true;
        }
        const int64_t length = BigEndian(bytes, at + 2, 2);
        if (length < 2) return false;
        at += 2 + static_cast<size_t>(length);
    }
    return false;
}

bool ReadImageSize(std::string_view bytes, ImageSize& size) {
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return ReadPngSize(bytes, size);
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return ReadJpegSize(bytes, size);
    if (bytes.starts_with("BM"sv)) return ReadBmpSize(bytes, size);
    return false;
}

bool IsReasonable(const ImageSize& size) {
    if (size.width < 1 || size.height < 1) return false;
    return size.width <= kMaxImagePixels / size.height;
}
