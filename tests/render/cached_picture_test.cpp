// Pictures that are drawn only where they differ from the one before, against the same drawn whole.
#include "render/builtin_meshes.h"
#include "render/damage.h"
#include "render/raster/camera.h"
#include "support/picture.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

constexpr int32_t kWide = 160, kHigh = 120;
constexpr Rect kView{30, 20, 110, 90};

namespace {

// One call of a primitive.
using Call = std::function<void()>;

}  // namespace

// What any primitive refers to must lie still.
static const std::vector<MeshAsset>& Library() {
    static const std::vector<MeshAsset> library = BuiltinMeshLibrary();
    return library;
}

static const PixelRows& Wheel() {
    static const PixelRows rows{{Pixel{1}}, {Pixel{2}, Pixel{3}, Pixel{4}}, {Pixel{5}}};
    return rows;
}

static Rect RandomRect(RandomSource& random) {
    const int32_t left = random.IntBetween(-20, kWide), top = random.IntBetween(-20, kHigh);
    return {left, top, left + random.IntBetween(-2, 60), top + random.IntBetween(-2, 40)};
}

static Point RandomPoint(RandomSource& random) {
    return {random.IntBetween(-20, kWide + 20), random.IntBetween(-20, kHigh + 20)};
}

static MeshInstance RandomMesh(RandomSource& random) {
    MeshInstance instance{&Library()[kCubeMesh].mesh};
    instance.draw.eye = {0, 0, -9};
    instance.draw.viewProjection =
        MultiplyMatrix(ProjectionMatrix(Width(kView), Height(kView)), ViewMatrix({.position{0, 0, -9}}));
    instance.draw.world.m[0][3] = random.Between(-3, 3);
    instance.draw.world.m[1][3] = random.Between(-2, 2);
    instance.draw.world.m[2][3] = random.Between(-3, 3);
    instance.draw.selected = random.OneIn(4);
    instance.draw.tint = random.Bits() & 0xFFFFFF;
    return instance;
}

static Call RandomCall(RandomSource& random) {
    constexpr const wchar_t* kTexts[] = {L"Position", L"0.25", L"a long text over many others",
                                         L"\u4e2d\u6587"};
    const Rect rect = RandomRect(random);
    const Point from = RandomPoint(random), to = RandomPoint(random);
    const Pixel color{random.Bits() & 0xFFFFFF};
    switch (random.IntBetween(0, 9)) {
        case 0:
        case 1:
        case 2: {
            const std::wstring text = kTexts[random.IntBetween(0, 3)];
            const int32_t height = random.IntBetween(8, 18);
            return [=] { DrawText(from.x, from.y, text, TextColor{0xFFFFFF}, height, 400); };
        }
        case 3: return [=] { DrawPixelRows(from, Wheel()); };
        case 4: return [=] { DrawLine(from, to, color); };
        case 5: {
            const MeshInstance mesh = RandomMesh(random);
            return [=] {
                CollectMesh(mesh);
                DrawCollectedMeshes();
            };
        }
        default: return [=] { FillRect(rect, color); };
    }
}

static std::vector<Call> RandomPicture(RandomSource& random) {
    std::vector<Call> calls;
    for (int32_t i = random.IntBetween(0, 30); i > 0; --i) calls.push_back(RandomCall(random));
    return calls;
}

// Another picture with most calls of this one.
static void ChangeALittle(std::vector<Call>& calls, RandomSource& random) {
    if (random.OneIn(20)) calls = RandomPicture(random);
    for (int32_t i = random.IntBetween(0, 2); i > 0; --i) {
        const auto place = calls.begin() + random.IntBetween(0, static_cast<int32_t>(calls.size()));
        if (random.OneIn(3)) {
            calls.insert(place, RandomCall(random));
        } else if (place != calls.end() && random.OneIn(2)) {
            calls.erase(place);
        } else if (place != calls.end()) {
            *place = RandomCall(random);
        }
    }
}

static LibraryMarks Marks() {
    LibraryMarks marks{Library().data()};
    for (const MeshAsset& asset : Library()) marks.meshMarks.push_back(asset.mesh.measures.identity);
    return marks;
}

static void Draw(const std::vector<Call>& calls) {
    BeginPicture();
    frameBuffer.viewport = kView;
    NoteLibrary(Marks());
    FillRect({0, 0, kWide, kHigh}, Pixel{0x202020});
    ClearViewportDepth();
    for (const Call& call : calls) call();
    ShowPicture();
}

static std::vector<Pixel> DrawnWhole(const std::vector<Call>& calls) {
    const CachedPicture kept = std::exchange(frameBuffer.picture, {});
    const std::vector<Pixel> shown = headless.pixels, window = headless.windowPixels;
    frameBuffer.cachesPicture = frameBuffer.cachesTexts = false;
    Draw(calls);
    const std::vector<Pixel> whole = headless.pixels;
    std::ranges::copy(shown, headless.pixels.begin());
    headless.windowPixels = window;
    frameBuffer.picture = kept;
    frameBuffer.cachesPicture = frameBuffer.cachesTexts = true;
    return whole;
}

static void StartCaching() {
    StartPicture(kWide, kHigh);
    frameBuffer.cachesPicture = frameBuffer.cachesTexts = true;
    headless.paintsTexts = headless.hasWindowPixels = true;
}

// Draws the picture and forgets what the window shows, so that it tells what is presented from here on.
static void ShowAndForget(const std::vector<Call>& calls) {
    Draw(calls);
    std::ranges::fill(headless.windowPixels, Pixel{0xABCDEF});
}

static int32_t PresentedPixels() {
    return static_cast<int32_t>(
        std::ranges::count_if(headless.windowPixels, [](Pixel p) { return p != Pixel{0xABCDEF}; }));
}

TEST_CASE("pictures drawn where they differ from the one before are the same as drawn whole") {
    constexpr uint32_t kSeed = 20261122;
    CAPTURE(kSeed);
    RandomSource random(kSeed);
    StartCaching();
    std::vector<Call> calls = RandomPicture(random);
    int32_t samePictures = 0;
    for (int32_t i = 0; i < 2000; ++i) {
        CAPTURE(i);
        const std::vector<Pixel> before = std::exchange(headless.windowPixels, {});
        headless.windowPixels = before;
        Draw(calls);
        const std::vector<Pixel> whole = DrawnWhole(calls);
        REQUIRE(headless.pixels == whole);
        REQUIRE(headless.windowPixels == whole);
        samePictures += before == whole;
        ChangeALittle(calls, random);
    }
    CHECK(samePictures > 100);  // there were pictures without a difference too
}

TEST_CASE("a picture with the steps of the one before presents nothing") {
    StartCaching();
    RandomSource random(3);
    for (int32_t i = 0; i < 20; ++i) {
        const std::vector<Call> calls = RandomPicture(random);
        ShowAndForget(calls);
        Draw(calls);
        CHECK(PresentedPixels() == 0);
    }
}

TEST_CASE("a fill of another colour is presented alone, and with the whole of a text over it") {
    StartCaching();
    const auto fill = [](uint32_t color) { return [color] { FillRect({1, 20, 29, 60}, Pixel{color}); }; };
    const auto little = [](uint32_t color) { return [color] { FillRect({12, 30, 14, 33}, Pixel{color}); }; };
    ShowAndForget({fill(1), little(1)});
    Draw({fill(1), little(2)});
    CHECK(PresentedPixels() == 2 * 3);

    const Call text = [] { DrawText(10, 30, L"m", TextColor{0xFFFFFF}, 10, 400); };
    Draw({fill(2), little(2), text});
    ShowAndForget({fill(3), little(3), text});
    Draw({fill(3), little(4), text});
    CHECK(PresentedPixels() >= 10 * 10);
    CHECK(PresentedPixels() < Width(Rect{1, 20, 29, 60}) * 40);
    CHECK(headless.windowPixels != headless.pixels);
}

TEST_CASE("a step that comes or goes between others is presented alone") {
    StartCaching();
    const auto fill = [](const Rect& rect) { return [rect] { FillRect(rect, Pixel{0xFF}); }; };
    // All three beside the viewport, whose depth can only be cleared whole.
    const Call first = fill({2, 4, 12, 14}), second = fill({140, 100, 150, 110}),
               third = fill({10, 50, 12, 53});
    for (const std::vector<Call>& longer :
         {std::vector{third, first, second}, {first, third, second}, {first, second, third}}) {
        ShowAndForget({first, second});
        Draw(longer);
        CHECK(PresentedPixels() == 2 * 3);
        ShowAndForget(longer);
        Draw({first, second});
        CHECK(PresentedPixels() == 2 * 3);
    }
}

TEST_CASE("what was drawn outside of a picture is not left in the next one") {
    StartCaching();
    const std::vector<Call> calls{[] { FillRect({10, 5, 14, 8}, Pixel{0x111111}); }};
    Draw(calls);
    for (const Call& stray : {Call([] {
                                  FillRect({0, 0, 50, 50}, Pixel{0x999999});
                              }),
                              Call([] { DrawText(5, 60, L"Esc", TextColor{0xFFFFFF}, 14, 400); })}) {
        stray();
        Present();
        Draw(calls);
        CHECK(headless.windowPixels == DrawnWhole(calls));
    }
}

TEST_CASE("a mesh is drawn anew when another one lies in its place, or one that has no mark") {
    StartCaching();
    Mesh mesh = Library()[kCubeMesh].mesh;
    RandomSource random(5);
    MeshInstance instance = RandomMesh(random);
    instance.mesh = &mesh;
    const auto draw = [&] {
        BeginPicture();
        frameBuffer.viewport = kView;
        NoteLibrary({.meshes = &mesh, .meshMarks = {mesh.measures.identity}});
        ClearViewportDepth();
        FillRect(kView, Pixel{0x202020});
        CollectMesh(instance);
        DrawCollectedMeshes();
        ShowPicture();
    };
    const auto presentedAfter = [&draw] {
        std::ranges::fill(headless.windowPixels, Pixel{0xABCDEF});
        draw();
        return PresentedPixels();
    };
    constexpr int32_t kAll = Width(kView) * Height(kView);
    draw();
    CHECK(presentedAfter() == 0);
    mesh = Library()[kSphereMesh].mesh;
    CHECK(presentedAfter() == kAll);
    CHECK(presentedAfter() == 0);
    mesh.measures.identity = nullptr;
    CHECK(presentedAfter() == kAll);
    CHECK(presentedAfter() == kAll);
}

TEST_CASE("each number that a mesh is drawn with makes another picture") {
    StartCaching();
    const TextureImage texture{.width = 1, .height = 1, .texels{Pixel{0x123456}}};
    constexpr void (*kChanges[])(MeshDraw&, const TextureImage&) = {
        [](MeshDraw& draw, const TextureImage&) { draw.eye.x = -0.0f; },
        [](MeshDraw& draw, const TextureImage&) { draw.light.y = 1; },
        [](MeshDraw& draw, const TextureImage&) { draw.viewProjection.m[0][0] *= 2; },
        [](MeshDraw& draw, const TextureImage&) { draw.world.m[2][3] += 1; },
        [](MeshDraw& draw, const TextureImage&) { draw.selected = !draw.selected; },
        [](MeshDraw& draw, const TextureImage&) { draw.tint ^= 1; },
        [](MeshDraw& draw, const TextureImage&) { draw.roughness = 0.5f; },
        [](MeshDraw& draw, const TextureImage&) { draw.gloss = 0.5f; },
        [](MeshDraw& draw, const TextureImage& image) { draw.texture = &image; },
        [](MeshDraw& draw, const TextureImage&) { draw.repeat = !draw.repeat; },
    };
    RandomSource random(6);
    for (const auto change : kChanges) {
        MeshInstance mesh = RandomMesh(random);
        const Call call = [&mesh] {
            CollectMesh(mesh);
            DrawCollectedMeshes();
        };
        ShowAndForget({call});
        Draw({call});
        CHECK(PresentedPixels() == 0);
        change(mesh.draw, texture);
        Draw({call});
        CHECK(PresentedPixels() == Width(kView) * Height(kView));
    }
}

TEST_CASE("a text that stays takes over which pixels it was found to change, another one does not") {
    constexpr Rect kInk{21, 12, 29, 17};
    const auto listOf = [](std::wstring letters, std::vector<Rect> fills) {
        DrawingList list{.viewport = kView, .letters = std::move(letters)};
        list.steps = {FillStep{{0, 0, 9, 9}, Pixel{1}}, TextStep{{20, 10}, {{}, 8, 400}, 0, 3}};
        for (const Rect& rect : fills) list.steps.emplace_back(FillStep{rect, Pixel{2}});
        return list;
    };
    const Rect fill{100, 100, 110, 110}, another{120, 100, 130, 110};
    DrawingList shown = listOf(L"abc", {fill});
    std::get<TextStep>(shown.steps[1]).ink = kInk;
    const struct {
        DrawingList next;
        bool stays;
    } cases[] = {{listOf(L"abc", {fill}), true},          {listOf(L"abc", {another}), true},
                 {listOf(L"abc", {fill, another}), true}, {listOf(L"abc", {}), true},
                 {listOf(L"abd", {fill}), false},         {listOf(L"abd", {fill, another}), false}};
    for (auto [next, stays] : cases) {
        DamageBetween(shown, next, {0, 0, kWide, kHigh});
        CHECK((std::get<TextStep>(next.steps[1]).ink == kInk) == stays);
    }
}

TEST_CASE("damage is a few rectangles that lie apart, and cuts no text") {
    RandomSource random(7);
    const Rect canvas{0, 0, kWide, kHigh};
    const auto listOf = [&random](int32_t count) {
        DrawingList list{.viewport = kView};
        for (int32_t i = 0; i < count; ++i) {
            if (random.OneIn(2)) {
                list.steps.emplace_back(FillStep{RandomRect(random), Pixel{random.Bits()}});
                continue;
            }
            list.steps.emplace_back(TextStep{RandomPoint(random), {{}, 8, 400}, list.letters.size(), 3});
            list.letters += L"abc";
        }
        return list;
    };
    for (int32_t round = 0; round < 500; ++round) {
        const DrawingList shown = listOf(random.IntBetween(0, 12));
        DrawingList next = random.OneIn(2) ? shown : listOf(random.IntBetween(0, 12));
        if (!next.steps.empty()) next.steps.back() = FillStep{RandomRect(random), Pixel{1}};
        const std::vector<Rect> damage = DamageBetween(shown, next, canvas);
        for (size_t i = 0; i < damage.size(); ++i) {
            REQUIRE(LiesWithin(damage[i], canvas));
            REQUIRE((Width(damage[i]) > 0 && Height(damage[i]) > 0));
            for (const DrawingStep& step : next.steps) {
                if (!std::holds_alternative<TextStep>(step)) continue;
                const Rect ink = BoundsOf(step, next, canvas);
                const Rect cut = BoundsOf(step, next, damage[i]);
                const bool touches = Width(cut) > 0 && Height(cut) > 0;
                REQUIRE((!touches || LiesWithin(ink, damage[i])));
            }
            for (size_t k = i + 1; k < damage.size(); ++k) {
                const Rect& a = damage[i];
                const Rect& b = damage[k];
                REQUIRE((a.right <= b.left || b.right <= a.left || a.bottom <= b.top || b.bottom <= a.top));
            }
        }
    }
}
