#include "platform/image_header.h"

#include "support/capture.h"
#include "support/gif_tiff_bytes.h"
#include "support/image_bytes.h"

#include "doctest/doctest.h"

#include <string>

using namespace std::string_literals;

// The size read; -1 by -1 for none.
static ImageSize SizeOf(const std::string& bytes) {
    ImageSize size{-1, -1};
    const ImageSize none = size;
    if (!ReadImageSize(bytes, size)) CHECK(size == none);
    return size;
}

static bool HasNoSize(const std::string& bytes) { return SizeOf(bytes) == ImageSize{-1, -1}; }

static std::string PngHeader(const std::string& sides) { return "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"s + sides; }
static std::string BmpHeader(const std::string& rest) { return "BM" + std::string(12, '\0') + rest; }

TEST_CASE("the size of an image is read from its header, whatever its format") {
    const TestImage image{7, 3, std::vector<uint32_t>(21, 0xFF123456)};
    for (const std::string& bytes : {PngBytes(image), JpegBytes(image), BmpBytes(image)}) {
        CHECK(SizeOf(bytes) == ImageSize{7, 3});
    }
    CHECK(SizeOf(BmpHeader("\x0C\0\0\0\x05\x01\x03\0\1\0\x18\0"s)) == ImageSize{261, 3});  // sides of 16 bits
    CHECK(SizeOf(BmpHeader("\x28\0\0\0\x05\0\0\0\xFD\xFF\xFF\xFF"s)) == ImageSize{5, 3});  // from the top
    CHECK(SizeOf(BmpHeader("\x28\0\0\0\xFF\xFF\xFF\xFF\0\0\0\x80"s)) ==
          ImageSize{-1, 0x80000000});  // the ends
    CHECK(SizeOf(PngHeader("\xFF\xFF\xFF\xFF\0\0\xEA\x60"s)) == ImageSize{0xFFFFFFFF, 60000});
}

TEST_CASE("the size of a GIF is that of the whole, unless one of its pictures is too large for any image") {
    const std::string gif = GifFile(3, 2, std::vector<uint32_t>(6, 0x123456));
    CHECK(SizeOf(gif) == ImageSize{3, 2});
    const std::string whole = gif.substr(0, gif.size() - 1),  // without the end
        extension = "\x21\xF9\4\0\0\0\0\0"s, small = "\x2C\0\0\0\0\x09\0\x09\0\x81............\2\1.\0"s,
                      large = "\x2C\0\0\0\0\xFF\xFF\xFF\xFF\0\2\0"s;
    CHECK(SizeOf(whole + extension + small) == ImageSize{3, 2});
    CHECK(SizeOf(whole + extension + small + large) == ImageSize{0xFFFF, 0xFFFF});
    CHECK(SizeOf(whole + ";" + large) == ImageSize{3, 2});  // behind the end
    CHECK(SizeOf("GIF87a\x01\x02\x03\x04\0\0\0"s) == ImageSize{0x201, 0x403});
    for (size_t length = 0; length < gif.size(); ++length) {
        CAPTURE(length);
        CHECK(SizeOf(gif.substr(0, length)) == (length < 13 ? ImageSize{-1, -1} : ImageSize{3, 2}));
    }
}

TEST_CASE("the size of a TIFF is that of its first picture, in either byte order") {
    for (const bool isBigEndian : {false, true}) {
        const std::string tiff = TiffFile(3, 2, std::vector<uint32_t>(6, 0x123456), isBigEndian);
        CHECK(SizeOf(tiff) == ImageSize{3, 2});
        constexpr size_t kEntriesEnd = 8 + 2 + 9 * 12;
        for (size_t length = 0; length < kEntriesEnd; ++length) CHECK(HasNoSize(tiff.substr(0, length)));
    }
    // One entry for the width of a tile and one for its height.
    const std::string tiles =
        "II*\0\x08\0\0\0\2\0\x42\1\4\0\1\0\0\0\xFF\xFF\1\0\x43\1\4\0\1\0\0\0\xFF\xFF\1\0"s;
    CHECK(SizeOf(tiles) == ImageSize{0x1FFFF, 0x1FFFF});
    CHECK(SizeOf("II*\0\xF0\xFF\xFF\xFF"s) == ImageSize{-1, -1});  // a list beyond the end
}

TEST_CASE("the frame of a JPEG is found behind other segments, fillers and markers that stand alone") {
    const std::string frame = "\xFF\xC2\0\x11\x08\x01\x02\x03\x04\x03"s;
    CHECK(SizeOf("\xFF\xD8"s + frame) == ImageSize{0x304, 0x102});
    CHECK(SizeOf("\xFF\xD8\xFF\xE1\0\x04\xFF\xC0\xFF\xFF\xFF\xD0\xFF\x01"s + frame) ==
          ImageSize{0x304, 0x102});
    CHECK(SizeOf("\xFF\xD8\xFF\xC4\0\2\xFF\xC8\0\2\xFF\xCC\0\2"s + frame) == ImageSize{0x304, 0x102});
    CHECK(HasNoSize("\xFF\xD8\xFF\xE0\0\1"s + frame));  // shorter than its own length
    CHECK(HasNoSize("\xFF\xD8\xFF\xE0\0\2no marker"s + frame));
    CHECK(HasNoSize("\xFF\xD8\xFF\xE0\xFF\xFF"s + frame));  // beyond the end
    CHECK(HasNoSize("\xFF\xD8\xFF\xFF\xFF\xFF"s));
}

TEST_CASE("a header that is cut short, or of no image, gives no size") {
    for (const std::string& whole : {PngHeader("\0\0\0\1\0\0\0\1"s), BmpHeader("\x28\0\0\0\1\0\0\0\1\0\0\0"s),
                                     "\xFF\xD8\xFF\xC0\0\x11\x08\0\1\0\1"s}) {
        CHECK(SizeOf(whole) == ImageSize{1, 1});
        for (size_t length = 0; length < whole.size(); ++length) CHECK(HasNoSize(whole.substr(0, length)));
    }
    for (const char* text :
         {"GIF89a\1\0\1\0", "GIF88a\1\0\1\0..............", "II*\0", "this is no image", "RIFF"}) {
        CHECK(HasNoSize(text));
    }
    CHECK(HasNoSize("\x89PNG\r\n\x1A\n\0\0\0\x0DIDAT\0\0\0\1\0\0\0\1"s));  // begins with another chunk
}

TEST_CASE("64 million pixels are a reasonable image, one more or none are not") {
    struct {
        ImageSize size;
        bool isReasonable;
    } cases[] = {{{1, 1}, true},           {{8000, 8000}, true},      {{64'000'000, 1}, true},
                 {{1, 64'000'000}, true},  {{64'000'001, 1}, false},  {{1, 64'000'001}, false},
                 {{8000, 8001}, false},    {{60'000, 60'000}, false}, {{0, 5}, false},
                 {{5, 0}, false},          {{-1, 5}, false},          {{0xFFFFFFFF, 0xFFFFFFFF}, false},
                 {{0x80000000, 2}, false}, {{5, -1}, false}};
    for (const auto& [size, isReasonable] : cases) {
        CAPTURE(size.width);
        CAPTURE(size.height);
        CHECK(IsReasonable(size) == isReasonable);
    }
}
