#include "render/raster/fill_triangle.h"

#include "render/raster/kernels.h"
#include "support/capture.h"
#include "support/picture.h"
#include "support/plain_renderer.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

constexpr Pixel kRed{0xFF0000}, kGreen{0x00FF00};

using Corners = std::array<ScreenCorner, 3>;
using Points = std::array<TexturePoint, 3>;

namespace {

struct Snapshot {
    std::vector<Pixel> pixels{};
    PixelValues<float> depth{};
};

}  // namespace

static Snapshot TakePicture() { return {headless.pixels, frameBuffer.depth}; }

// Bit for bit, so that zeros of either sign differ.
static bool SameBits(const Snapshot& a, const Snapshot& b) {
    return a.pixels == b.pixels && a.depth.size() == b.depth.size() &&
           std::memcmp(a.depth.data(), b.depth.data(), a.depth.size() * sizeof(float)) == 0;
}

static void StartUneven(RandomSource& random, int32_t width, int32_t height) {
    StartPicture(width, height, Pixel{0x0A0B0C});
    for (float& depth : frameBuffer.depth) depth = random.OneIn(3) ? 1.0f : random.Between(0, 1);
}

static TextureImage RandomImage(RandomSource& random) {
    TextureImage image{.width = random.IntBetween(1, 9), .height = random.IntBetween(1, 9)};
    if (random.OneIn(12)) return {};
    for (int32_t i = 0; i < image.width * image.height; ++i)
        image.texels.push_back(Pixel{random.Bits() & 0xFFFFFF});
    return image;
}

TEST_CASE("every fill gives the pixels and depths of the plain renderer on random triangles, bit for bit") {
    constexpr uint32_t kSeed = 20240611;
    INFO("seed ", kSeed);
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        RandomSource random(kSeed);
        for (int round = 0; round < 4000; ++round) {
            const int32_t width = random.IntBetween(1, 41), height = random.IntBetween(1, 23);
            const uint32_t depthSeed = random.Bits();
            const Corners corners =
                RandomTriangle(random, static_cast<float>(width), static_cast<float>(height));
            const TextureImage image = RandomImage(random);
            const TextureFill fill{&image, random.OneIn(2), random.OneIn(3) ? 0 : random.Bits() & 0xFFFFFF,
                                   random.Between(0, 2)};
            const bool textured = random.OneIn(2);
            Points points;
            for (TexturePoint& p : points) p = {random.Between(-4, 4), random.Between(-4, 4)};
            const Rect viewport{random.IntBetween(0, width / 3), random.IntBetween(0, height / 3),
                                random.IntBetween(width / 2, width), random.IntBetween(height / 2, height)};

            RandomSource plainDepth(depthSeed);
            StartUneven(plainDepth, width, height);
            frameBuffer.viewport = viewport;
            if (textured) {
                FillTrianglePlainly(corners, points, fill);
            } else {
                FillTrianglePlainly(corners, kRed);
            }
            const Snapshot expected = TakePicture();

            RandomSource sameDepth(depthSeed);
            StartUneven(sameDepth, width, height);
            frameBuffer.viewport = viewport;
            frameBuffer.simd = level;
            if (textured) {
                FillTriangle(corners, points, fill, frameBuffer);
            } else {
                FillTriangle(corners, kRed, frameBuffer);
            }
            CAPTURE(round);
            REQUIRE(SameBits(TakePicture(), expected));
        }
    }
}

static TextureImage Image(int32_t width, int32_t height) {
    TextureImage image{.width = width, .height = height};
    for (int32_t i = 0; i < width * height; ++i) image.texels.push_back(Pixel{static_cast<uint32_t>(i)});
    return image;
}

// What the first pixel of a large triangle shows that has these coordinates everywhere. Its weights and their
// sum are exact.
static Pixel Sampled(const TextureImage& image, float u, float v, bool repeat, SimdLevel level) {
    StartPicture(16, 4);
    frameBuffer.simd = level;
    FillTriangle({{{0, 0, 0.5f, 1}, {64, 0, 0.5f, 1}, {0, 16, 0.5f, 1}}}, {{{u, v}, {u, v}, {u, v}}},
                 {&image, repeat, 0, 1}, frameBuffer);
    CHECK(DepthAt(0, 0) == 0.5f);
    return PixelAt(0, 0);
}

TEST_CASE("u runs right and v up, and the last column and the bottom row show only at the very end") {
    const TextureImage image = Image(4, 3);
    struct {
        float u, v;
        uint32_t texel;
    } cases[] = {
        {0, 1, 0},     {0.99f, 1, 2}, {1, 1, 3},  {0, 0.49f, 4},
        {0, 0.01f, 4}, {0, 0, 8},     {1, 0, 11}, {0.34f, 0.5f, 5},
    };
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        for (auto [u, v, texel] : cases) CHECK(Sampled(image, u, v, false, level) == Pixel{texel});
    }
}

TEST_CASE("stretching limits coordinates, repeating takes their fraction") {
    const TextureImage image = Image(5, 1);
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        CHECK(Sampled(image, -3, 0, false, level) == Pixel{0});
        CHECK(Sampled(image, 7, 0, false, level) == Pixel{4});
        CHECK(Sampled(image, 7.25f, 0, true, level) == Pixel{1});
        CHECK(Sampled(image, -0.25f, 0, true, level) == Pixel{3});  // 0.75
        CHECK(Sampled(image, 2, 0, true, level) == Pixel{0});
    }
}

TEST_CASE("an image without texels is white, one of a single pixel is that pixel everywhere") {
    const TextureImage image{.width = 1, .height = 1, .texels{Pixel{0x123456}}};
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        CHECK(Sampled({}, 0.5f, 0.5f, true, level) == Pixel{0xFFFFFF});
        for (float at : {-2.0f, 0.0f, 0.3f, 1.0f, 9.5f}) {
            CHECK(Sampled(image, at, at, true, level) == Pixel{0x123456});
            CHECK(Sampled(image, at, at, false, level) == Pixel{0x123456});
        }
    }
}

TEST_CASE("texture coordinates that are not numbers or are infinite pick a texel of the image") {
    const TextureImage image = Image(4, 4);
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        for (float bad : {nan, inf, -inf, 1e38f, -1e38f}) {
            for (bool repeat : {false, true})
                CHECK(static_cast<uint32_t>(Sampled(image, bad, bad, repeat, level)) < 16);
        }
        CHECK(Sampled(image, nan, nan, true, level) == Pixel{12});  // as 0, 0
    }
}

TEST_CASE("every fill treats texture coordinates beyond the image alike") {
    RandomSource random(5);
    for (float scale : {1e3f, 1e9f, 3e38f}) {
        for (bool repeat : {false, true}) {
            std::vector<Snapshot> pictures;
            for (SimdLevel level : TestedLevels()) {
                StartPicture(32, 8);
                frameBuffer.simd = level;
                TextureImage image{.width = 3, .height = 3, .texels = std::vector<Pixel>(9)};
                for (size_t i = 0; i < 9; ++i) image.texels[i] = Pixel{static_cast<uint32_t>(i) * 20};
                const TextureFill fill{&image, repeat, 0, 1};
                FillTriangle({{{0, 0, 0.5f, 1}, {64, 0, 0.5f, 1}, {0, 16, 0.5f, 1}}},
                             {{{-scale, scale}, {scale, scale}, {scale, -scale}}}, fill, frameBuffer);
                pictures.push_back(TakePicture());
            }
            for (const Snapshot& picture : pictures) CHECK(SameBits(picture, pictures.front()));
        }
    }
}

// One row of texels, each channel of which has all values from 0 to 255. Beyond the box of a small face, so
// that a factor is looked for; a quarter of the texels shows in each row of the picture.
TEST_CASE("a large textured face is lit as the plain renderer lights it, every byte at many a brightness") {
    constexpr uint32_t kSeed = 255;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    TextureImage image{.width = 256, .height = 1};
    for (uint32_t i = 0; i < 256; ++i) {
        const uint32_t unused = random.OneIn(2) ? 0xFF000000 : 0;
        image.texels.push_back(Pixel{unused | i << 16 | (i * 7 & 255) << 8 | (255 - i)});
    }
    std::vector<float> values{0.22f, 0.25f, 0.5f, 0.75f, 0.99999994f, 1.0f, 1.0000001f, 1.6f, 0.0f};
    // Just below 10/11, 4/11, 7/12 and 5/22, which have no whole factor.
    values.insert(values.end(), {0.90909088f, 0.36363634f, 0.58333331f, 0.22727272f});
    for (int i = 0; i < 300; ++i) values.push_back(random.Between(0.22f, 1.1f));
    constexpr Corners kCorners{{{0, 0, 0.5f, 1}, {128, 0, 0.5f, 1}, {0, 64, 0.5f, 1}}};
    constexpr Points kPoints{{{0, 0.5f}, {0.5f, 0.5f}, {16, 0.5f}}};
    for (const float brightness : values) {
        CAPTURE(brightness);
        const TextureFill fill{&image, true, random.OneIn(2) ? 0 : random.Bits() & 0xFFFFFF, brightness};
        StartPicture(64, 32);
        FillTrianglePlainly(kCorners, kPoints, fill);
        const Snapshot expected = TakePicture();
        for (SimdLevel level : TestedLevels()) {
            CAPTURE(NameOf(level));
            StartPicture(64, 32);
            frameBuffer.simd = level;
            FillTriangle(kCorners, kPoints, fill, frameBuffer);
            REQUIRE(SameBits(TakePicture(), expected));
        }
    }
}

TEST_CASE("a side of 2^24 texels and more is never read past its end") {
    // Its last column, 33554435, becomes the float 33554436.
    constexpr int32_t kSide = 33554436;
    TextureImage image{.width = kSide, .height = 1};
    image.texels.assign(kSide, Pixel{1});
    image.texels.back() = Pixel{0x00FF00};
    for (SimdLevel level : TestedLevels()) {
        StartPicture(16, 4);
        frameBuffer.simd = level;
        const TextureFill fill{&image, false, 0, 1};
        FillTriangle({{{0, 0, 0.5f, 1}, {64, 0, 0.5f, 1}, {0, 16, 0.5f, 1}}}, {{{2, 0}, {2, 0}, {2, 0}}},
                     fill, frameBuffer);
        CHECK(CountOf(Pixel{0x00FF00}) == 64);
    }
}

TEST_CASE("a triangle covers the pixels whose centres lie inside, edges included, in both windings") {
    for (bool reversed : {false, true}) {
        StartPicture(10, 10);
        Corners corners{{{1.5f, 1.5f, 0.5f, 1}, {6.5f, 1.5f, 0.5f, 1}, {1.5f, 6.5f, 0.5f, 1}}};
        if (reversed) std::swap(corners[1], corners[2]);
        FillTriangle(corners, kRed, frameBuffer);
        CHECK(CountOf(kRed) == 21);  // 6 + 5 + 4 + 3 + 2 + 1 centres, those on the three edges included
        CHECK(PixelAt(1, 1) == kRed);
        CHECK(PixelAt(6, 1) == kRed);
        CHECK(PixelAt(1, 6) == kRed);
        CHECK(PixelAt(4, 4) != kRed);
    }
}

TEST_CASE("of two triangles that share an edge at the same depth, the first keeps the edge's pixels") {
    StartPicture(10, 10);
    FillTriangle({{{0.5f, 0.5f, 0.5f, 1}, {8.5f, 0.5f, 0.5f, 1}, {0.5f, 8.5f, 0.5f, 1}}}, kRed, frameBuffer);
    FillTriangle({{{8.5f, 0.5f, 0.5f, 1}, {8.5f, 8.5f, 0.5f, 1}, {0.5f, 8.5f, 0.5f, 1}}}, kGreen,
                 frameBuffer);
    for (int32_t i = 0; i <= 8; ++i) CHECK(PixelAt(i, 8 - i) == kRed);
    CHECK(PixelAt(8, 8) == kGreen);
    CHECK(CountOf(kRed) + CountOf(kGreen) == 81);
}

TEST_CASE("only strictly nearer pixels are drawn, and never at depths below 0 or beyond 1") {
    StartPicture(4, 4);
    const auto fillAt = [](float depth, Pixel color) {
        FillTriangle({{{0, 0, depth, 1}, {20, 0, depth, 1}, {0, 20, depth, 1}}}, color, frameBuffer);
    };
    fillAt(1.001f, kGreen);
    CHECK(CountOf(kGreen) == 0);
    fillAt(0.5f, kRed);
    CHECK(CountOf(kRed) == 16);
    fillAt(0.5f, kGreen);
    CHECK(CountOf(kGreen) == 0);
    fillAt(-0.01f, kGreen);
    CHECK(CountOf(kGreen) == 0);
    fillAt(0.25f, kGreen);
    CHECK(CountOf(kGreen) == 16);
    CHECK(DepthAt(3, 3) == 0.25f);
}

// A thin triangle around the centre of the picture's first pixel.
static Corners Sliver(float left, float right, float foot, float tip) {
    return {{{left, foot, 0.5f, 1}, {right, foot, 0.5f, 1}, {0.5f, tip, 0.5f, 1}}};
}

TEST_CASE("a triangle without area draws nothing") {
    StartPicture(10, 10);
    FillTriangle({{{1, 1, 0.5f, 1}, {9, 9, 0.5f, 1}, {5, 5, 0.5f, 1}}}, kRed, frameBuffer);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    FillTriangle({{{nan, 1, 0.5f, 1}, {9, 9, 0.5f, 1}, {5, 2, 0.5f, 1}}}, kRed, frameBuffer);
    CHECK(CountOf(kRed) == 0);
}

TEST_CASE("twice the area must be at least 0.0001 square pixels") {
    // 5 / 2^12 wide and 2748777 or 2748779 / 2^25 high, so that the products come out exactly: the second one
    // is just the float 0.0001, which is 13743895 / 2^37.
    constexpr float kAcross = 0x1p-12f, kUp = 0x1p-25f;
    const float left = 0.5f - 2 * kAcross, right = 0.5f + 3 * kAcross, foot = 0.5f - 1374391 * kUp;
    struct {
        Corners sliver;
        int32_t pixels;
    } cases[] = {
        {Sliver(left, right, foot, 0.5f + 1374386 * kUp), 0},
        {Sliver(left, right, foot, 0.5f + 1374388 * kUp), 1},
    };
    for (auto& [sliver, pixels] : cases) {
        for (bool reversed : {false, true}) {
            if (reversed) std::swap(sliver[0], sliver[1]);
            StartPicture(10, 10);
            FillTriangle(sliver, kRed, frameBuffer);
            CHECK(CountOf(kRed) == pixels);
            const TextureImage green{.width = 1, .height = 1, .texels{kGreen}};
            StartPicture(10, 10);
            FillTriangle(sliver, {}, {&green, false, 0, 1}, frameBuffer);
            CHECK(CountOf(kGreen) == pixels);
        }
    }
}

TEST_CASE("a depth of exactly 0 is drawn, flat and textured, at every level") {
    const TextureImage green{.width = 1, .height = 1, .texels{kGreen}};
    const Corners corners{{{0, 0, 0, 1}, {64, 0, 0, 1}, {0, 64, 0, 1}}};
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        StartPicture(24, 5);
        frameBuffer.simd = level;
        FillTriangle(corners, kRed, frameBuffer);
        CHECK(CountOf(kRed) == 120);
        CHECK(frameBuffer.depth == PixelValues<float>(120, 0.0f));
        StartPicture(24, 5);
        frameBuffer.simd = level;
        FillTriangle(corners, {}, {&green, false, 0, 1}, frameBuffer);
        CHECK(CountOf(kGreen) == 120);
    }
}

TEST_CASE("a textured pixel whose 1 / w is within 0.000001 of 0 is skipped, with its depth") {
    const TextureImage green{.width = 1, .height = 1, .texels{kGreen}};
    struct {
        float inverseW;
        int32_t pixels;
    } cases[] = {{0.9e-6f, 0}, {-0.9e-6f, 0}, {1.1e-6f, 120}, {-1.1e-6f, 120}, {0, 0}};
    for (SimdLevel level : TestedLevels()) {
        for (auto [inverseW, pixels] : cases) {
            CAPTURE(NameOf(level));
            CAPTURE(inverseW);
            StartPicture(24, 5);
            frameBuffer.simd = level;
            FillTriangle({{{0, 0, 0.5f, inverseW}, {64, 0, 0.5f, inverseW}, {0, 64, 0.5f, inverseW}}}, {},
                         {&green, false, 0, 1}, frameBuffer);
            CHECK(CountOf(kGreen) == pixels);
            CHECK((DepthAt(23, 4) == 1.0f) == (pixels == 0));
        }
    }
}

// So long and thin that rounding decides about its pixels.
static void MakeSliver(RandomSource& random, Corners& corners, float width, float height) {
    const float x = random.Between(0, width), y = random.Between(0, height), noise = random.Between(0, 0.01f);
    const float stepX = random.Between(-1, 1), stepY = random.Between(-1, 1);
    for (ScreenCorner& corner : corners) {
        const float t = random.Between(-100000, 100000);
        corner.x = x + t * stepX + random.Between(-noise, noise);
        corner.y = y + t * stepY + random.Between(-noise, noise);
    }
}

// As RandomTriangle, but also slivers, corners next to the sides of the picture, and 1 / w near to zero.
static Corners UnusualTriangle(RandomSource& random, float width, float height) {
    Corners corners = RandomTriangle(random, width, height);
    if (random.OneIn(2)) MakeSliver(random, corners, width, height);
    const bool isFar = random.OneIn(2), isAtSide = random.OneIn(2);
    const float least = random.OneIn(2) ? -2e-6f : 4.1e-6f;  // of 1 / w
    for (ScreenCorner& corner : corners) {
        corner.depth = std::max(corner.depth, 0.0f);
        if (isFar) corner.inverseW = random.Between(least, 5e-6f);
        const float hair = std::ldexp(random.Between(-1, 1), random.IntBetween(-24, -6));
        if (isAtSide && random.OneIn(2)) (random.OneIn(2) ? corner.x : corner.y) = hair;
    }
    return corners;
}

// The face that the scan leaves of one triangle of the whole picture; no face if none is left.
static std::vector<ScannedFace> Scanned(const Corners& corners, const RasterKernels& kernels) {
    constexpr MeshTriangle kTriangle{0, 1, 2};
    const std::vector<uint32_t> numbers(1 + kListMargin);
    std::vector<ScannedFace> faces(1 + kListMargin);
    faces.resize(kernels.scanFaces(
        {&kTriangle, corners.data(), numbers.data(), 1, frameBuffer.viewport, kFarDepth}, faces.data()));
    return faces;
}

TEST_CASE("a textured face of the scan gives the plain renderer's pixels, however small its 1 / w") {
    constexpr uint32_t kSeed = 66;
    INFO("seed ", kSeed);
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        RandomSource random(kSeed);
        int32_t ordinary = 0, others = 0;
        for (int round = 0; round < 8000; ++round) {
            const int32_t width = random.IntBetween(16, 41), height = random.IntBetween(4, 23);
            const Corners corners =
                UnusualTriangle(random, static_cast<float>(width), static_cast<float>(height));
            const TextureImage image = RandomImage(random);
            const TextureFill fill{&image, random.OneIn(2), 0, random.Between(0, 2)};
            FaceInk ink;
            ink.brightness = fill.brightness;
            for (TexturePoint& p : ink.points) p = {random.Between(-4, 4), random.Between(-4, 4)};
            StartPicture(width, height);
            FillTrianglePlainly(corners, {ink.points[0], ink.points[1], ink.points[2]}, fill);
            const Snapshot expected = TakePicture();

            StartPicture(width, height);
            frameBuffer.simd = level;
            constexpr MeshTriangle kTriangle{0, 1, 2};
            const std::vector<ScannedFace> faces = Scanned(corners, KernelsOf(level));
            MeshToDraw mesh;
            mesh.triangles = &kTriangle;
            mesh.corners = corners.data();
            mesh.isTextured = true;
            mesh.texture = SourceOf(image, fill.repeat, fill.tint);
            mesh.faces = faces.data();
            mesh.faceCount = faces.size();
            mesh.findInk = FindKnownInk;
            mesh.knownInk = &ink;
            FillFaces(mesh, frameBuffer.viewport, level, frameBuffer);
            CAPTURE(round);
            REQUIRE(SameBits(TakePicture(), expected));
            if (!faces.empty()) ++(faces.front().isOrdinary ? ordinary : others);
        }
        CHECK(ordinary > 1000);
        CHECK(others > 500);
    }
}

// An ordinary face has a right angle at (16, 16) unless one of its numbers is replaced.
TEST_CASE("a face is ordinary unless it is thin or has a corner within 2^-10 pixels of an axis") {
    constexpr float kAxis = 0x1p-10f, kNearer = 0x1.fffffep-11f;
    struct {
        Corners corners;
        bool isOrdinary;
    } cases[] = {
        {{{{16, 16}, {48, 16}, {16, 48}}}, true},
        {{{{-16, 16}, {48, -16}, {-16, -48}}}, true},
        {{{{kAxis, 16}, {48, 16}, {16, 48}}}, true},
        {{{{kNearer, 16}, {48, 16}, {16, 48}}}, false},
        {{{{16, 16}, {-kAxis, 16}, {16, 48}}}, true},
        {{{{16, 16}, {-kNearer, 16}, {16, 48}}}, false},
        {{{{16, 16}, {48, 16}, {0, 48}}}, false},
        {{{{16, kAxis}, {48, 16}, {16, 48}}}, true},
        {{{{16, 16}, {48, -kNearer}, {16, 48}}}, false},
        {{{{16, 16}, {48, 16}, {16, -kAxis}}}, true},
        {{{{16, 16}, {48, 16}, {16, 0}}}, false},
        // 16 pixels wide, and twice the area is 80 / 2^24 of 17.5 squared, or a little more.
        {{{{16, 0x1p-5f}, {32, 0x1p-5f}, {16, 0x1p-5f + 6125 * 0x1p-26f}}}, false},
        {{{{16, 0x1p-5f}, {32, 0x1p-5f}, {16, 0x1p-5f + 24501 * 0x1p-28f}}}, true},
    };
    StartPicture(64, 64);
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        for (size_t i = 0; i < std::size(cases); ++i) {
            CAPTURE(i);
            const std::vector<ScannedFace> faces = Scanned(cases[i].corners, KernelsOf(level));
            REQUIRE(faces.size() == 1);
            CHECK(faces.front().isOrdinary == cases[i].isOrdinary);
        }
    }
}

// Counts how often a face was asked for its ink, and whether the answer is that it is drawn.
static int32_t timesAsked = 0;
static bool saysDrawn = true;

static bool FindAskedInk(const MeshToDraw&, size_t, FaceInk& ink) {
    ++timesAsked;
    ink.color = kRed;
    return saysDrawn;
}

// The lower right half of a box in the corner of the buffer, at one depth.
static void FillCorner(int32_t width, float depth, bool isTextured, const TextureImage& image) {
    const Rect box{frameBuffer.width - width, 0, frameBuffer.width, frameBuffer.height};
    const auto left = static_cast<float>(box.left), right = static_cast<float>(box.right),
               bottom = static_cast<float>(box.bottom);
    const Corners corners{{{right, bottom, depth, 1}, {left, bottom, depth, 1}, {right, 0, depth, 1}}};
    const MeshTriangle triangle{0, 1, 2};
    const ScannedFace face{0, box, depth * 0.99f};
    MeshToDraw mesh;
    mesh.triangles = &triangle;
    mesh.corners = corners.data();
    mesh.isTextured = isTextured;
    mesh.texture = SourceOf(image, false, 0);
    mesh.faces = &face;
    mesh.faceCount = 1;
    mesh.findInk = FindAskedInk;
    timesAsked = 0;
    FillFaces(mesh, box, frameBuffer.simd, frameBuffer);
}

TEST_CASE(
    "a face is asked for its colours once, if a pixel of it is seen, and may then say that it is not drawn") {
    const TextureImage image{.width = 1, .height = 1, .texels{kRed}};
    for (SimdLevel level : TestedLevels()) {
        for (int32_t width : {3, 7, 30, 60, 90}) {
            for (bool isTextured : {false, true}) {
                CAPTURE(NameOf(level));
                CAPTURE(width);
                CAPTURE(isTextured);
                StartPicture(100, 20);
                frameBuffer.simd = level;
                saysDrawn = false;
                FillCorner(width, 0.4f, isTextured, image);
                CHECK(timesAsked == 1);
                CHECK(CountOf(kRed) == 0);
                CHECK(DepthAt(99, 19) == kFarDepth);
                saysDrawn = true;
                FillCorner(width, 0.5f, isTextured, image);
                CHECK(timesAsked == 1);
                CHECK(CountOf(kRed) >= width * 20 / 2);
                FillCorner(width, 0.6f, isTextured, image);
                CHECK(timesAsked == 0);
            }
        }
    }
}

TEST_CASE("depths that are not numbers draw nothing") {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (SimdLevel level : TestedLevels()) {
        StartPicture(20, 10);
        frameBuffer.simd = level;
        FillTriangle({{{0, 0, nan, 1}, {20, 0, 0.5f, 1}, {0, 20, 0.5f, 1}}}, kRed, frameBuffer);
        CHECK(CountOf(kRed) == 0);
    }
}

TEST_CASE("no triangle writes outside the viewport") {
    RandomSource random(99);
    for (SimdLevel level : TestedLevels()) {
        for (int round = 0; round < 300; ++round) {
            StartPicture(37, 19);
            frameBuffer.simd = level;
            frameBuffer.viewport = {5, 3, random.IntBetween(5, 37), random.IntBetween(3, 19)};
            FillTriangle(RandomTriangle(random, 37, 19), kRed, frameBuffer);
            for (int32_t y = 0; y < 19; ++y) {
                for (int32_t x = 0; x < 37; ++x) {
                    if (Contains(frameBuffer.viewport, {x, y})) continue;
                    REQUIRE(PixelAt(x, y) == Pixel{0});
                    REQUIRE(DepthAt(x, y) == 1.0f);
                }
            }
        }
    }
}

// The edge functions of the definition, for a triangle's three corners.
static bool IsInside(const Corners& c, int32_t x, int32_t y) {
    bool inside = true;
    for (size_t i = 0; i < 3; ++i) {
        const ScreenCorner &start = c[(i + 1) % 3], &end = c[(i + 2) % 3];
        const float w = ((static_cast<float>(x) + 0.5f - start.x) * (end.y - start.y) -
                         (static_cast<float>(y) + 0.5f - start.y) * (end.x - start.x)) /
                        AreaOf(c);
        inside = inside && w >= 0;
    }
    return inside;
}

TEST_CASE("the columns found for a row contain every covered pixel") {
    constexpr Rect kBox{0, 0, 64, 48};
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        const RasterKernels& kernels = KernelsOf(level);
        RandomSource random(3);
        for (int round = 0; round < 5000; ++round) {
            const Corners corners = RandomTriangle(random, 64, 48);
            if (!(std::abs(AreaOf(corners)) >= kSmallestArea)) continue;
            const ScreenCorner plain[3] = {corners[0], corners[1], corners[2]};
            const int32_t first = random.IntBetween(0, 47);
            int32_t left[kMostLanes], right[kMostLanes];
            kernels.coveredColumns(plain, kBox, first, left, right);
            CAPTURE(round);
            for (int32_t row = 0; row < kernels.lanes; ++row) {
                for (int32_t x = 0; x < 64; ++x) {
                    if (IsInside(corners, x, first + row)) REQUIRE((x >= left[row] && x < right[row]));
                }
            }
        }
    }
}
