#include "platform/image_decoder.h"

#include "doctest/doctest.h"
#include "platform/files.h"
#include "platform/windows/image_files.h"
#include "platform/windows/test_folder.h"
#include "support/gif_tiff_bytes.h"
#include "support/source_path.h"

static const std::string kTwoPixelPng = PngFile(
    2, 2, 8, 6,
    {std::string("\xFF\x00\x00\xFF\x10\x20\x30\x00", 8), std::string("\x01\x02\x03\xFF\x40\x50\x60\x80", 8)});

static DecodedImage Decode(const std::string& bytes) {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"image", bytes));
    DecodedImage image;
    REQUIRE(DecodeImageFile(folder / L"image", image));
    return image;
}

static bool IsRefused(const std::string& bytes) {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"image.png", bytes));
    DecodedImage image{7, 1, {5}};
    if (DecodeImageFile(folder / L"image.png", image)) return false;
    CHECK(image.width == 7);
    CHECK(image.height == 1);
    CHECK(image.argb == std::vector<uint32_t>{5});
    return true;
}

static std::string TestData(const wchar_t* name) {
    std::string bytes;
    REQUIRE(ReadWholeFile(SourcePath(L"tests/data/" + std::wstring(name)), bytes));
    return bytes;
}

TEST_CASE("a PNG keeps colour and alpha of every pixel, from the top left") {
    const DecodedImage image = Decode(kTwoPixelPng);
    CHECK(image.width == 2);
    CHECK(image.height == 2);
    CHECK(image.argb == std::vector<uint32_t>{0xFFFF0000, 0x00102030, 0xFF010203, 0x80405060});
}

TEST_CASE("a BMP is opaque, and its rows come from the top") {
    const DecodedImage image =
        Decode(BmpFile(3, 2, {0xFF0000, 0x00FF00, 0x0000FF, 0x010203, 0x040506, 0xFFFFFF}));
    CHECK(image.width == 3);
    CHECK(image.height == 2);
    CHECK(image.argb ==
          std::vector<uint32_t>{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF010203, 0xFF040506, 0xFFFFFFFF});
}

TEST_CASE("a JPEG shows its colours") {
    const DecodedImage image = Decode(TestData(L"red_blue.jpg"));
    REQUIRE(image.width == 16);
    REQUIRE(image.height == 16);
    const uint32_t left = image.argb[8 * 16 + 3], right = image.argb[8 * 16 + 12];
    CHECK(((left >> 16) & 0xFF) > 230);
    CHECK((left & 0xFF) < 30);
    CHECK(((right >> 16) & 0xFF) < 30);
    CHECK((right & 0xFF) > 230);
    CHECK((left >> 24) == 0xFF);
}

TEST_CASE("an image cut short at any byte is refused or read as far as it goes") {
    const TestFolder folder;
    const std::string bmp = BmpFile(3, 2, std::vector<uint32_t>(6, 0x123456)),
                      jpeg = TestData(L"red_blue.jpg");
    for (const std::string& whole : {kTwoPixelPng, bmp, jpeg}) {
        const DecodedImage wholeImage = Decode(whole);
        for (size_t size = 0; size < whole.size(); ++size) {
            CAPTURE(size);
            CAPTURE(whole.size());
            const std::wstring path = folder / (std::to_wstring(whole.size()) + L"_" + std::to_wstring(size));
            REQUIRE(WriteWholeFile(path, whole.substr(0, size)));
            DecodedImage image{7, 1, {5}};
            const bool isRead = DecodeImageFile(path, image);
            if (size <= 20) CHECK_FALSE(isRead);  // before the end of any header
            CHECK(image.width == (isRead ? wholeImage.width : 7));
            CHECK(image.height == (isRead ? wholeImage.height : 1));
            CHECK(image.argb.size() == (isRead ? wholeImage.argb.size() : 1));
        }
    }
}

TEST_CASE("an image without a row or a column is refused, and one of a single pixel is not") {
    CHECK(IsRefused(PngFile(0, 1, 8, 0, {""})));
    CHECK(IsRefused(PngFile(1, 0, 8, 0, {})));
    CHECK(IsRefused(BmpFile(0, 1, {})));
    CHECK(IsRefused(BmpFile(1, 0, {})));
    CHECK(Decode(PngFile(1, 1, 8, 0, {"\x80"})).argb == std::vector<uint32_t>{0xFF808080});
    CHECK(Decode(BmpFile(1, 1, {0x123456})).argb == std::vector<uint32_t>{0xFF123456});
}

TEST_CASE("more pixels than the limit are refused, whether they are there or only promised") {
    for (const uint32_t side : {9'000u, 30'000u, 60'000u, 0x7FFF'FFFFu}) {
        CHECK(IsRefused(PngFile(side, side, 8, 6, {std::string(8, '\0')})));
    }
    const std::vector<std::string> rows(13, std::string(615'385, '\0'));  // 4,923,077 pixels of one bit
    static_assert(int64_t{4'923'077} * 13 == kMaxImagePixels + 1);
    CHECK(IsRefused(PngFile(4'923'077, 13, 1, 0, rows)));
}

TEST_CASE("a device is no image, and nobody waits for it") {
    const TestFolder folder;
    for (const wchar_t* name : {L"CON", L"NUL", L"COM1", L"CONIN$", L"LPT1", L"AUX"}) {
        DecodedImage image;
        CHECK_FALSE(DecodeImageFile(name, image));
        CHECK_FALSE(DecodeImageFile(folder / name, image));
        std::string bytes;
        CHECK_FALSE(ReadWholeFile(name, bytes));
        CHECK_FALSE(ReadWholeFile(folder / name, bytes));
    }
}

TEST_CASE("an image of exactly as many pixels as the limit is read") {
    const std::vector<std::string> rows(8000, std::string(1000, '\xFF'));
    const DecodedImage image = Decode(PngFile(8000, 8000, 1, 0, rows));
    CHECK(image.argb.size() == size_t{kMaxImagePixels});
    CHECK(image.argb.front() == 0xFFFFFFFF);
    CHECK(image.argb.back() == 0xFFFFFFFF);
}

TEST_CASE("a file that is no image is refused") {
    const TestFolder folder;
    DecodedImage image;
    CHECK_FALSE(DecodeImageFile(folder / L"missing.png", image));
    CHECK_FALSE(DecodeImageFile(folder.Path(), image));
    CHECK_FALSE(DecodeImageFile(L"", image));
    CHECK(IsRefused(""));
    CHECK(IsRefused("ZELENGINE_SCENE\t1\r\n"));
}

TEST_CASE("a decoded file is free to be deleted") {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"a.png", kTwoPixelPng));
    DecodedImage image;
    REQUIRE(DecodeImageFile(folder / L"a.png", image));
    CHECK(RemoveFile(folder / L"a.png"));
}

TEST_CASE("GIF and TIFF files, and BMP files from the top, are read whatever their names say") {
    const std::vector<uint32_t> pixels{0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0xFF0000, 0x0000FF};
    std::vector<uint32_t> argb = pixels;
    for (uint32_t& pixel : argb) pixel |= 0xFF000000;
    // Turned over: the rows of the file run from the top.
    std::string fromTheTop = BmpFile(3, 2, {0xFFFFFF, 0xFF0000, 0x0000FF, 0xFF0000, 0x00FF00, 0x0000FF});
    fromTheTop.replace(22, 4, "\xFE\xFF\xFF\xFF");  // a height of minus 2
    for (const std::string& bytes :
         {GifFile(3, 2, pixels), TiffFile(3, 2, pixels, false), TiffFile(3, 2, pixels, true), fromTheTop}) {
        const TestFolder folder;
        for (const wchar_t* name : {L"a.png", L"a.jpg", L"a.jpeg", L"a.bmp"}) {
            REQUIRE(WriteWholeFile(folder / name, bytes));
            DecodedImage image;
            REQUIRE(DecodeImageFile(folder / name, image));
            CHECK(image.width == 3);
            CHECK(image.height == 2);
            CHECK(image.argb == argb);
        }
    }
}

TEST_CASE("GIF and TIFF files that promise more pixels than the limit are refused") {
    std::string gif = GifFile(3, 2, std::vector<uint32_t>(6, 0)),
                tiff = TiffFile(3, 2, std::vector<uint32_t>(6, 0), false);
    gif.replace(6, 4, "\xFF\xFF\xFF\xFF");
    CHECK(IsRefused(gif));
    const size_t width = tiff.find(std::string("\0\1\4\0", 4)) + 8;
    tiff.replace(width, 4, "\xFF\xFF\xFF\x7F");
    CHECK(IsRefused(tiff));
}
