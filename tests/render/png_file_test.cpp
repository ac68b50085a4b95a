#include "render/png_file.h"

#include "platform/image_decoder.h"
#include "support/image_bytes.h"
#include "support/scratch_folder.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

#include <random>
#include <string>

constexpr const wchar_t* kIconNames[] = {L"camera",      L"entity", L"light", L"files",
                                         L"c-plus-plus", L"scene",  L"obj",   L"pe"};

static std::wstring IconPath(const std::wstring& name) { return SourcePath(L"assets/" + name + L".png"); }

// Neighbouring pixels differ in all four channels.
static TestImage RandomImage(int32_t width, int32_t height, uint32_t seed) {
    std::mt19937 random(seed);
    TestImage image{width, height, {}};
    for (int32_t i = 0; i < width * height; ++i) {
        const bool isSmooth = i / width % 3 == 0;  // rows of other filters
        image.argb.push_back(isSmooth ? static_cast<uint32_t>(i) * 0x01020304u : random());
    }
    return image;
}

TEST_CASE("the program's icons are the pixels that another decoder reads") {
    for (const wchar_t* name : kIconNames) {
        DecodedImage expected, image;
        REQUIRE(DecodeImageFile(IconPath(name), expected));
        REQUIRE(ReadPngFile(FileBytes(IconPath(name)), image));
        CHECK(image.width == expected.width);
        CHECK(image.height == expected.height);
        CHECK(image.argb == expected.argb);
    }
}

TEST_CASE("any picture is read back pixel by pixel") {
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        CAPTURE(seed);
        const auto width = static_cast<int32_t>(1 + seed * 7 % 50),
                   height = static_cast<int32_t>(1 + seed % 40);
        const TestImage made = RandomImage(width, height, seed);
        DecodedImage image;
        REQUIRE(ReadPngFile(PngBytes(made), image));
        CHECK(image.width == width);
        CHECK(image.height == height);
        CHECK(image.argb == made.argb);
    }
}

TEST_CASE("a picture that is cut short or changed in one byte is refused and changes nothing") {
    const std::string whole = PngBytes(RandomImage(5, 4, 1));
    const DecodedImage before{.width = 1, .height = 1, .argb = {7}};
    DecodedImage image = before;
    for (size_t length = 0; length < whole.size(); ++length) {
        CHECK_FALSE(ReadPngFile(whole.substr(0, length), image));
    }
    for (size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
        CHECK_FALSE(ReadPngFile(damaged, image));
    }
    CHECK(image.argb == before.argb);
}

TEST_CASE("a file that is not a plain PNG of four channels is left to the system") {
    const TestImage picture = RandomImage(6, 6, 3);
    DecodedImage image;
    CHECK_FALSE(ReadPngFile("", image));
    CHECK_FALSE(ReadPngFile(BmpBytes(picture), image));
    CHECK_FALSE(ReadPngFile(JpegBytes(picture), image));
    CHECK_FALSE(ReadPngFile(PngBytes(RandomImage(1025, 1, 1)), image));
    CHECK_FALSE(ReadPngFile(PngBytes(RandomImage(1, 1025, 1)), image));
    CHECK(ReadPngFile(PngBytes(RandomImage(1024, 1, 1)), image));
    // A chunk of gamma, 1 / 2.2, before the data.
    std::string corrected = PngBytes(picture);
    corrected.insert(33, std::string("\0\0\0\4gAMA\0\0\xB1\x8F\x0B\xFC\x61\x05", 16));
    CHECK_FALSE(ReadPngFile(corrected, image));
}
