#include "platform/canvas.h"

#include "doctest/doctest.h"
#include "platform/files.h"
#include "platform/windows/canvas_device.h"
#include "platform/windows/image_files.h"
#include "platform/windows/test_folder.h"
#include "support/source_path.h"

#include <algorithm>
#include <random>
#include <vector>

namespace {

// A canvas of a test's own, filled with one colour.
struct TestCanvas {
    TestCanvas(int32_t canvasWidth, int32_t canvasHeight, uint32_t fill)
        : width(canvasWidth), height(canvasHeight), pixels(CreateCanvas(canvasWidth, canvasHeight)) {
        REQUIRE(pixels != nullptr);
        std::fill_n(pixels, width * height, Pixel{fill});
    }
    ~TestCanvas() { DestroyCanvas(); }
    TestCanvas(const TestCanvas&) = delete;
    TestCanvas& operator=(const TestCanvas&) = delete;

    uint32_t At(int32_t x, int32_t y) const {
        return static_cast<uint32_t>(pixels[y * width + x]) & 0xFFFFFF;
    }

    int32_t width, height;
    Pixel* pixels;
};

}  // namespace

// The smallest rectangle around what differs from `fill`.
static Rect PaintedArea(const TestCanvas& canvas, uint32_t fill) {
    Rect area{canvas.width, canvas.height, 0, 0};
    for (int32_t y = 0; y < canvas.height; ++y) {
        for (int32_t x = 0; x < canvas.width; ++x) {
            if (canvas.At(x, y) == fill) continue;
            area = {std::min(area.left, x), std::min(area.top, y), std::max(area.right, x + 1),
                    std::max(area.bottom, y + 1)};
        }
    }
    return area;
}

static int64_t Brightness(const TestCanvas& canvas) {
    int64_t sum = 0;
    for (int32_t i = 0; i < canvas.width * canvas.height; ++i) {
        sum += static_cast<uint32_t>(canvas.pixels[i]) >> 8 & 0xFF;
    }
    return sum;
}

TEST_CASE("a pixel is 0x00RRGGBB, and rows follow each other from the top") {
    const TestCanvas canvas(5, 3, 0);
    canvas.pixels[1 * 5 + 3] = Pixel{0x00112233};
    FlushCanvas();
    CHECK(GetPixel(CanvasDevice(), 3, 1) == RGB(0x11, 0x22, 0x33));
    SetPixel(CanvasDevice(), 4, 2, RGB(0xAA, 0xBB, 0xCC));
    FlushCanvas();
    CHECK(canvas.At(4, 2) == 0xAABBCC);
}

TEST_CASE("a text fills its cell and nothing else, in its own colour") {
    const TestCanvas canvas(200, 60, 0);
    DrawCanvasText(40, 20, L"Hgq|", TextColor{0x0000FF}, 18, 400);  // 0x00BBGGRR: red
    FlushCanvas();

    const Rect painted = PaintedArea(canvas, 0);
    CHECK(painted.left >= 38);
    CHECK(painted.left < 48);
    CHECK(painted.right > 60);
    CHECK(painted.right < 100);
    CHECK(painted.top >= 20);
    CHECK(painted.bottom <= 38);
    CHECK(Height(painted) >= 12);

    uint32_t brightest = 0;
    for (int32_t y = 0; y < canvas.height; ++y) {
        for (int32_t x = 0; x < canvas.width; ++x) {
            CHECK((canvas.At(x, y) & 0x00FFFF) == 0);
            brightest = std::max(brightest, canvas.At(x, y));
        }
    }
    CHECK(brightest >= 0xC00000);
}

TEST_CASE("a text leaves the background between its strokes as it was") {
    const TestCanvas canvas(100, 40, 0x251F1C);
    DrawCanvasText(10, 10, L"o", TextColor{0xFFFFFF}, 20, 400);
    FlushCanvas();
    const Rect painted = PaintedArea(canvas, 0x251F1C);
    REQUIRE(Width(painted) > 4);
    CHECK(canvas.At((painted.left + painted.right) / 2, (painted.top + painted.bottom) / 2) == 0x251F1C);
}

TEST_CASE("weight 600 is bolder than 400, and a greater height is taller") {
    int64_t plain = 0, bold = 0;
    int32_t small = 0, large = 0;
    {
        const TestCanvas canvas(300, 60, 0);
        DrawCanvasText(5, 5, L"Hierarchy", TextColor{0xFFFFFF}, 18, 400);
        FlushCanvas();
        plain = Brightness(canvas);
        small = Height(PaintedArea(canvas, 0));
    }
    {
        const TestCanvas canvas(300, 60, 0);
        DrawCanvasText(5, 5, L"Hierarchy", TextColor{0xFFFFFF}, 18, 600);
        FlushCanvas();
        bold = Brightness(canvas);
    }
    {
        const TestCanvas canvas(300, 60, 0);
        DrawCanvasText(5, 5, L"Hierarchy", TextColor{0xFFFFFF}, 25, 400);
        FlushCanvas();
        large = Height(PaintedArea(canvas, 0));
    }
    CHECK(bold > plain);
    CHECK(large > small);
}

TEST_CASE("the same text drawn twice gives the same pixels") {
    const TestCanvas canvas(200, 80, 0);
    DrawCanvasText(10, 0, L"Inspector", TextColor{0xFFFFFF}, 13, 600);
    DrawCanvasText(10, 40, L"Inspector", TextColor{0xFFFFFF}, 13, 600);
    FlushCanvas();
    for (int32_t y = 0; y < 40; ++y) {
        for (int32_t x = 0; x < canvas.width; ++x) CHECK(canvas.At(x, y) == canvas.At(x, y + 40));
    }
}

TEST_CASE("an empty text and a text outside draw nothing") {
    const TestCanvas canvas(50, 20, 0);
    DrawCanvasText(0, 0, L"", TextColor{0xFFFFFF}, 13, 400);
    DrawCanvasText(-500, 0, L"left", TextColor{0xFFFFFF}, 13, 400);
    DrawCanvasText(0, 5000, L"below", TextColor{0xFFFFFF}, 13, 400);
    FlushCanvas();
    CHECK(Width(PaintedArea(canvas, 0)) <= 0);
}

TEST_CASE("a new size replaces the canvas, down to one pixel and back") {
    for (const auto [width, height] : {Point{300, 200}, Point{1, 1}, Point{300, 200}, Point{1, 500}}) {
        Pixel* pixels = CreateCanvas(width, height);
        REQUIRE(pixels != nullptr);
        std::fill_n(pixels, width * height, Pixel{0});
        pixels[width * height - 1] = Pixel{0x010203};
        DrawCanvasText(0, 0, L"text", TextColor{0xFFFFFF}, 13, 400);
        FlushCanvas();
        CHECK(GetPixel(CanvasDevice(), width, 0) == CLR_INVALID);
        CHECK(GetPixel(CanvasDevice(), 0, height) == CLR_INVALID);
    }
    DestroyCanvas();
    CHECK(CanvasDevice() == nullptr);
}

TEST_CASE("a thousand new sizes leave no drawing objects behind") {
    REQUIRE(CreateCanvas(10, 10) != nullptr);
    const DWORD before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int32_t i = 0; i < 1000; ++i) {
        REQUIRE(CreateCanvas(10 + i % 7, 10) != nullptr);
        DrawCanvasText(0, 0, L"text", TextColor{0xFFFFFF}, 13, 400);
    }
    CHECK(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS) <= before + 1);  // the font
    DestroyCanvas();
}

TEST_CASE("a canvas that memory cannot hold is refused, and nothing is drawn until there is one again") {
    REQUIRE(CreateCanvas(10, 10) != nullptr);
    CHECK(CreateCanvas(0x7FFFFFFF, 0x7FFFFFFF) == nullptr);
    CHECK(CanvasDevice() == nullptr);
    DrawCanvasText(0, 0, L"text", TextColor{0xFFFFFF}, 13, 400);
    DrawCanvasImage(0, {0, 0, 5, 5});
    FlushCanvas();
    PresentCanvas();
    CHECK(CreateCanvas(10, 10) != nullptr);
    DestroyCanvas();
}

TEST_CASE("an image is scaled by its nearest pixel, and its transparent pixels let the canvas through") {
    const TestFolder folder;
    // Opaque and transparent columns by turns. Systems differ by half a pixel of the image in where one ends
    // and the next begins, so only the first part of each is looked at closely.
    const std::string pair("\xFF\x20\x10\xFF\x00\xFF\x00\x00", 8);
    const std::string row = pair + pair;
    REQUIRE(WriteWholeFile(folder / L"a.png", PngFile(4, 4, 8, 6, {row, row, row, row})));
    const CanvasImage image = LoadCanvasImage(folder / L"a.png");
    REQUIRE(image >= 0);

    const TestCanvas canvas(40, 30, 0x251F1C);
    DrawCanvasImage(image, {10, 5, 30, 25});
    FlushCanvas();

    for (int32_t line = 0; line < 4; ++line) {
        for (int32_t column = 0; column < 4; ++column) {
            const uint32_t expected = column % 2 == 0 ? 0xFF2010 : 0x251F1C;
            CHECK(canvas.At(10 + 5 * column + 1, 5 + 5 * line + 1) == expected);
        }
    }
    for (int32_t y = 0; y < canvas.height; ++y) {
        for (int32_t x = 0; x < canvas.width; ++x) {
            const uint32_t pixel = canvas.At(x, y);
            CHECK((pixel == 0xFF2010 || pixel == 0x251F1C));
            if (!Contains({10, 5, 30, 25}, {x, y})) CHECK(pixel == 0x251F1C);
        }
    }
    ReleaseCanvasImages();
}

TEST_CASE("an image made of a file's pixels draws what the file draws, at every size") {
    const std::wstring assets = SourcePath(L"assets/");
    for (const wchar_t* name :
         {L"camera", L"entity", L"light", L"files", L"c-plus-plus", L"scene", L"obj", L"pe"}) {
        const std::wstring path = assets + name + L".png";
        DecodedImage pixels;
        REQUIRE(DecodeImageFile(path, pixels));
        const CanvasImage loaded = LoadCanvasImage(path), made = MakeCanvasImage(pixels);
        REQUIRE(loaded >= 0);
        REQUIRE(made >= 0);
        const TestCanvas canvas(200, 100, 0x251F1C);
        for (const int32_t size : {18, 24, 28, 32, 72, 95}) {
            std::fill_n(canvas.pixels, canvas.width * canvas.height, Pixel{0x251F1C});
            DrawCanvasImage(loaded, {3, 2, 3 + size, 2 + size});
            DrawCanvasImage(made, {103, 2, 103 + size, 2 + size});
            FlushCanvas();
            int32_t different = 0, marked = 0;
            for (int32_t y = 0; y < canvas.height; ++y) {
                for (int32_t x = 0; x < 100; ++x) {
                    different += canvas.At(x, y) != canvas.At(x + 100, y);
                    marked += canvas.At(x, y) != 0x251F1C;
                }
            }
            CHECK(different == 0);
            CHECK(marked > size);
        }
    }
    ReleaseCanvasImages();
}

TEST_CASE("an image that is drawn again is what the system draws, on any ground") {
    constexpr int32_t kSize = 28;
    constexpr Rect kPlaces[] = {
        {5, 4, 5 + kSize, 4 + kSize}, {30, 20, 30 + 18, 20 + 18}, {-9, 3, 15, 27}, {70, 60, 98, 88}};
    std::mt19937 random(7);
    const auto fill = [&](const TestCanvas& canvas, int32_t ground) {
        for (int32_t i = 0; i < canvas.width * canvas.height; ++i) {
            const uint32_t noise = ground == 2 ? static_cast<uint32_t>(random()) : 0;
            canvas.pixels[i] = Pixel{ground == 1 && i / canvas.width % 5 == 0 ? 0x5B5E46 : 0x2D2219 ^ noise};
        }
    };
    const CanvasImage image = LoadCanvasImage(SourcePath(L"assets/light.png"));
    REQUIRE(image >= 0);
    const TestCanvas canvas(80, 70, 0);
    const auto count = static_cast<size_t>(canvas.width * canvas.height);
    for (const Rect& place : kPlaces) {
        for (int32_t ground = 0; ground < 3; ++ground) {
            fill(canvas, ground);
            const std::vector<Pixel> under(canvas.pixels, canvas.pixels + count);
            const auto draw = [&] {
                DrawCanvasImage(image, place);
                FlushCanvas();
                return std::vector<Pixel>(canvas.pixels, canvas.pixels + count);
            };
            const auto drawn = [&](bool isForgotten) {
                if (isForgotten) windowCanvas.cachedImages = {};
                std::ranges::copy(under, canvas.pixels);
                return draw();
            };
            const std::vector<Pixel> bySystem = drawn(true);
            CHECK(bySystem != under);
            CHECK(drawn(false) == bySystem);
            CHECK(drawn(false) == bySystem);
            CHECK(draw() != under);  // over itself
            // Another ground at one pixel in the middle, where the image is not opaque everywhere.
            for (int32_t i = 0; i < 20; ++i) {
                std::vector<Pixel> changed = under;
                const auto at = static_cast<size_t>(random()) % count;
                changed[at] = Pixel{static_cast<uint32_t>(changed[at]) ^ 0x0000FF};
                std::ranges::copy(changed, canvas.pixels);
                const std::vector<Pixel> kept = draw();
                windowCanvas.cachedImages = {};
                std::ranges::copy(changed, canvas.pixels);
                CHECK(kept == draw());
            }
        }
    }
    ReleaseCanvasImages();
}

TEST_CASE("an image that takes the number of a released one is drawn itself") {
    const TestCanvas canvas(40, 40, 0x251F1C);
    const auto drawn = [&](const wchar_t* name) {
        const CanvasImage image = LoadCanvasImage(SourcePath(L"assets/" + std::wstring(name)));
        std::fill_n(canvas.pixels, 1600, Pixel{0x251F1C});
        DrawCanvasImage(image, {4, 4, 32, 32});
        FlushCanvas();
        ReleaseCanvasImages();
        return std::vector<Pixel>(canvas.pixels, canvas.pixels + 1600);
    };
    const std::vector<Pixel> light = drawn(L"light.png"), camera = drawn(L"camera.png");
    CHECK(light != camera);
    CHECK(drawn(L"light.png") == light);
}

TEST_CASE("images beyond the cache's limit are drawn all the same") {
    const CanvasImage image = LoadCanvasImage(SourcePath(L"assets/obj.png"));
    const TestCanvas canvas(400, 400, 0x251F1C);
    for (int32_t round = 0; round < 3; ++round) {
        std::fill_n(canvas.pixels, 160'000, Pixel{0x251F1C});
        // 169 places of 60 x 60 pixels, 608,400 in all.
        for (int32_t i = 0; i < 169; ++i)
            DrawCanvasImage(image, {i % 13 * 28, i / 13 * 28, i % 13 * 28 + 60, i / 13 * 28 + 60});
        FlushCanvas();
        int32_t marked = 0;
        for (int32_t i = 0; i < 169; ++i) marked += canvas.At(i % 13 * 28 + 30, i / 13 * 28 + 30) != 0x251F1C;
        CHECK(marked == 169);
    }
    ReleaseCanvasImages();
}

TEST_CASE("an image that is not there draws nothing") {
    const TestFolder folder;
    CHECK(LoadCanvasImage(folder / L"missing.png") == -1);
    const TestCanvas canvas(20, 20, 0x251F1C);
    DrawCanvasImage(-1, {0, 0, 20, 20});
    DrawCanvasImage(1000, {0, 0, 20, 20});
    FlushCanvas();
    CHECK(Width(PaintedArea(canvas, 0x251F1C)) <= 0);
}

TEST_CASE("a text drawn beside the canvas is the one drawn on it") {
    constexpr int32_t kMargin = 20;
    const TestCanvas canvas(400, 90, 0x251F1C);
    for (const wchar_t* text : {L"Hierarchy", L"Žluťoučký kůň", L"[x]", L"0.00", L"🙂", L"fjord W."}) {
        for (auto [height, weight] : {std::pair{13, 400}, {15, 600}, {18, 600}}) {
            std::fill_n(canvas.pixels, canvas.width * canvas.height, Pixel{0x251F1C});
            DrawCanvasText(kMargin, kMargin, text, TextColor{0x78E2FF}, height, weight);
            FlushCanvas();
            TextPicture beside;
            REQUIRE(
                RasterizeText(text, TextColor{0x78E2FF}, height, weight, Pixel{0x251F1C}, kMargin, beside));
            REQUIRE(beside.width <= canvas.width);
            REQUIRE(beside.height <= canvas.height);
            int32_t different = 0, marked = 0;
            for (int32_t y = 0; y < beside.height; ++y) {
                for (int32_t x = 0; x < beside.width; ++x) {
                    const auto i = static_cast<size_t>(y * beside.width + x);
                    const uint32_t pixel = static_cast<uint32_t>(beside.pixels[i]) & 0xFFFFFF;
                    different += pixel != canvas.At(x, y);
                    marked += pixel != 0x251F1C;
                }
            }
            CHECK(different == 0);
            CHECK(marked > 10);
        }
    }
}

TEST_CASE("without a canvas and for an empty text nothing is drawn beside it") {
    TextPicture picture;
    CHECK_FALSE(RasterizeText(L"Hello", TextColor{}, 15, 400, Pixel{}, 5, picture));
    const TestCanvas canvas(10, 10, 0);
    CHECK_FALSE(RasterizeText(L"", TextColor{}, 15, 400, Pixel{}, 5, picture));
    CHECK(picture.pixels.empty());
}
