#include "platform/image_header.h"

#include "support/capture.h"
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

TEST_CASE("a header that is cut short, and what is no image, has no size") {
    for (const std::string& whole : {PngHeader("\0\0\0\1\0\0\0\1"s), BmpHeader("\x28\0\0\0\1\0\0\0\1\0\0\0"s),
                                     "\xFF\xD8\xFF\xC0\0\x11\x08\0\1\0\1"s}) {
        CHECK(SizeOf(whole) == ImageSize{1, 1});
        for (size_t length = 0; length < whole.size(); ++length) CHECK(HasNoSize(whole.substr(0, length)));
    }
    for (const char* text : {"GIF89a\1\0\1\0.......................", "II*\0", "this is no image", "RIFF"}) {
        CHECK(HasNoSize(text));
    }
    CHECK(HasNoSize("\x89PNG\r\n\x1A\n\0\0\0\x0DIDAT\0\0\0\1\0\0\0\1"s));  // begins with another chunk
}

TEST_CASE("an image of 64 million pixels is reasonable, and one more, or none, is not") {
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
