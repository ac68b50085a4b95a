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

static bool HasFewEnoughPixels(const ImageSize& size) {
    return size.height < 1 || size.width <= kMaxImagePixels / size.height;
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

// The bytes of a GIF's colour table, by the flags of the block that it follows.
static size_t ColorTableBytes(int64_t flags) { return flags & 0x80 ? size_t{3} << ((flags & 7) + 1) : 0; }

// Behind the blocks that each begin with their length; the last has none.
static size_t AfterBlocks(std::string_view bytes, size_t at) {
    while (at < bytes.size() && bytes[at] != 0) at += 1 + static_cast<size_t>(LittleEndian(bytes, at, 1));
    return at + 1;
}

// A decoder may take memory for every picture of the file, however large the whole says that they are.
static bool ReadGifSize(std::string_view bytes, ImageSize& size) {
    constexpr size_t kSides = 6, kFlags = 10, kEnd = 13;
    constexpr int64_t kExtension = 0x21, kPicture = 0x2C;
    if (bytes.size() < kEnd) return false;
    size = {LittleEndian(bytes, kSides, 2), LittleEndian(bytes, kSides + 2, 2)};
    size_t at = kEnd + ColorTableBytes(LittleEndian(bytes, kFlags, 1));
    while (at < bytes.size()) {
        const int64_t kind = LittleEndian(bytes, at, 1);
        if (kind == kExtension) {
            at = AfterBlocks(bytes, at + 2);
        } else if (kind == kPicture) {
            const ImageSize picture{LittleEndian(bytes, at + 5, 2), LittleEndian(bytes, at + 7, 2)};
            if (!HasFewEnoughPixels(picture)) size = picture;
            at = AfterBlocks(bytes, at + 11 + ColorTableBytes(LittleEndian(bytes, at + 9, 1)));
        } else {
            break;
        }
    }
    return true;
}

namespace {

// Both byte orders of a TIFF.
struct TiffBytes {
    std::string_view bytes{};
    bool isBigEndian = false;

    int64_t At(size_t at, size_t count) const {
        return isBigEndian ? BigEndian(bytes, at, count) : LittleEndian(bytes, at, count);
    }
};

}  // namespace

static bool ReadTiffSize(const TiffBytes& tiff, ImageSize& size) {
    constexpr size_t kEntry = 12;                           // bytes: tag, type, count, value
    constexpr int64_t kShort = 3, kLong = 4;                // types
    constexpr int64_t kWidth = 256, kHeight = 257;          // tags
    constexpr int64_t kTileWidth = 322, kTileHeight = 323;  // likewise
    const auto list = static_cast<size_t>(tiff.At(4, 4));
    const auto count = static_cast<size_t>(tiff.At(list, 2));
    ImageSize image, tile{1, 1};
    for (size_t i = 0; i < count; ++i) {
        const size_t at = list + 2 + i * kEntry;
        if (at + kEntry > tiff.bytes.size()) return false;
        const int64_t tag = tiff.At(at, 2), type = tiff.At(at + 2, 2);
        if (type != kShort && type != kLong) continue;
        const int64_t value = tiff.At(at + 8, type == kShort ? 2 : 4);
        if (tag == kWidth) image.width = value;
        if (tag == kHeight) image.height = value;
        if (tag == kTileWidth) tile.width = value;
        if (tag == kTileHeight) tile.height = value;
    }
    if (count == 0) return false;
    size = HasFewEnoughPixels(tile) ? image : tile;
    return true;
}

// The first bytes choose the format, never the file's name: decoders look at the bytes too, and a size that
// was read by other rules than theirs would let an image through that takes all memory.
bool ReadImageSize(std::string_view bytes, ImageSize& size) {
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return ReadPngSize(bytes, size);
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return ReadJpegSize(bytes, size);
    if (bytes.starts_with("BM"sv)) return ReadBmpSize(bytes, size);
    if (bytes.starts_with("GIF87a"sv) || bytes.starts_with("GIF89a"sv)) return ReadGifSize(bytes, size);
    if (bytes.starts_with("II*\0"sv)) return ReadTiffSize({bytes, false}, size);
    if (bytes.starts_with("MM\0*"sv)) return ReadTiffSize({bytes, true}, size);
    return false;
}

bool IsReasonable(const ImageSize& size) {
    return size.width >= 1 && size.height >= 1 && HasFewEnoughPixels(size);
}
