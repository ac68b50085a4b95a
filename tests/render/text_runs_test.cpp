#include "render/text_runs.h"

#include "app/frame.h"
#include "editor/theme.h"
#include "scene/commands.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <random>

constexpr Pixel kGround{0x251F1C};
constexpr TextColor kInk{0x78E2FF};

static void StartTexts(int32_t width = 300, int32_t height = 100) {
    StartPicture(width, height, kGround);
    headless.paintsTexts = true;
    frameBuffer.cachesTexts = true;
}

// How many texts the system drew while `draw` ran.
template <typename Draw>
static size_t SystemTexts(Draw draw) {
    headless.texts.clear();
    draw();
    return headless.texts.size();
}

static void DrawHello(int32_t x = 20, int32_t y = 20) { DrawText(x, y, L"Hello", kInk, 15, kNormal); }

TEST_CASE("a text is drawn by the system once and comes out of cached pixels from the second time on") {
    StartTexts();
    CHECK(SystemTexts([] { DrawHello(); }) == 1);
    const std::vector<Pixel> first = headless.pixels;
    Clear(kGround);
    CHECK(SystemTexts([] { DrawHello(); }) == 0);
    CHECK(headless.pixels == first);
    Clear(kGround);
    CHECK(SystemTexts([] { DrawHello(); }) == 0);
    CHECK(headless.pixels == first);
}

TEST_CASE("a cached text can stand anywhere on its background, but not hang over an edge") {
    StartTexts();
    DrawHello();
    DrawHello();
    // It covers 36 x 17 pixels from 2 left of its corner on, and one more around them is looked at.
    const int32_t right = 300 - 35, bottom = 100 - 18;
    for (auto [x, y] : {std::pair{3, 1}, {right, bottom}, {100, 50}}) {
        CHECK(SystemTexts([x = x, y = y] { DrawHello(x, y); }) == 0);
    }
    for (auto [x, y] :
         {std::pair{2, 20}, {0, 20}, {-3, 20}, {20, 0}, {20, -1}, {right + 1, 20}, {20, bottom + 1}}) {
        CAPTURE(x);
        CAPTURE(y);
        CHECK(SystemTexts([x = x, y = y] { DrawHello(x, y); }) == 1);
    }
}

TEST_CASE("each string, colour, height, weight and background is cached separately") {
    StartTexts();
    DrawHello();
    DrawHello();
    CHECK(SystemTexts([] { DrawText(20, 20, L"Hellp", kInk, 15, kNormal); }) == 1);
    Clear(kGround);
    CHECK(SystemTexts([] { DrawText(20, 20, L"Hello", TextColor{0x78E2FE}, 15, kNormal); }) == 1);
    Clear(kGround);
    CHECK(SystemTexts([] { DrawText(20, 20, L"Hello", kInk, 14, kNormal); }) == 1);
    Clear(kGround);
    CHECK(SystemTexts([] { DrawText(20, 20, L"Hello", kInk, 15, kSemiBold); }) == 1);
    Clear(Pixel{0x251F1D});
    CHECK(SystemTexts([] { DrawHello(); }) == 1);
}

TEST_CASE("the system draws a text over more than one colour, wherever the other colour lies") {
    StartTexts();
    DrawHello();
    DrawHello();
    // The text covers 18 .. 54 by 20 .. 37; the pixel around it may hold traces.
    for (auto [x, y] : {std::pair{17, 19}, {54, 19}, {17, 37}, {54, 37}, {30, 30}}) {
        Clear(kGround);
        FillRect({x, y, x + 1, y + 1}, Pixel{0x251F1D});
        CAPTURE(x);
        CAPTURE(y);
        CHECK(SystemTexts([] { DrawHello(); }) == 1);
    }
    for (auto [x, y] : {std::pair{16, 25}, {55, 25}, {30, 18}, {30, 38}}) {
        Clear(kGround);
        FillRect({x, y, x + 1, y + 1}, Pixel{0x251F1D});
        CAPTURE(x);
        CAPTURE(y);
        CHECK(SystemTexts([] { DrawHello(); }) == 0);
    }
}

TEST_CASE("a text in its background's colour is cached with its real extent") {
    StartTexts();
    const TextColor ground{0x1C1F25};  // kGround in the other byte order
    const auto draw = [=] { DrawText(20, 20, L"Hello", ground, 15, kNormal); };
    draw();
    CHECK(SystemTexts(draw) == 0);
    CHECK(CountOf(kGround) == 300 * 100);
    FillRect({30, 20, 300, 100}, Pixel{0xFFFFFF});
    CHECK(SystemTexts(draw) == 1);
}

TEST_CASE("the fourth byte of a pixel makes no difference") {
    StartTexts();
    DrawHello();
    for (int32_t i = 0; i < 300 * 100; ++i) frameBuffer.pixels[i] = Pixel{0xAB251F1Cu};
    CHECK(SystemTexts([] { DrawHello(); }) == 0);
}

TEST_CASE("without the cache, and after emptying it, every text is drawn by the system") {
    StartTexts();
    DrawHello();
    DrawHello();
    frameBuffer.texts = {};
    Clear(kGround);
    CHECK(SystemTexts([] { DrawHello(); }) == 1);
    frameBuffer.cachesTexts = false;
    for (int32_t i = 0; i < 3; ++i) CHECK(SystemTexts([] { DrawHello(); }) == 1);
}

TEST_CASE("a text that the platform cannot draw beside the canvas is always drawn on it") {
    StartTexts();
    headless.paintsTexts = false;
    for (int32_t i = 0; i < 4; ++i) CHECK(SystemTexts([] { DrawHello(); }) == 1);
}

TEST_CASE("an empty text and one of a thousand letters are drawn without harm") {
    StartTexts();
    for (int32_t i = 0; i < 3; ++i) {
        DrawText(20, 20, L"", kInk, 15, kNormal);
        CHECK(SystemTexts([] { DrawText(20, 20, std::wstring(1000, L'x'), kInk, 15, kNormal); }) == 1);
    }
}

TEST_CASE("twenty thousand different texts are drawn right although not all are cached") {
    StartTexts(80, 20);
    for (int32_t round = 0; round < 2; ++round) {
        for (int32_t i = 0; i < 20'000; ++i) DrawText(5, 1, std::to_wstring(i), kInk, 8, kNormal);
    }
    Clear(kGround);
    DrawText(5, 1, L"19999", kInk, 8, kNormal);
    const std::vector<Pixel> kept = headless.pixels;
    frameBuffer.cachesTexts = false;
    Clear(kGround);
    DrawText(5, 1, L"19999", kInk, 8, kNormal);
    CHECK(headless.pixels == kept);
}

// Boxes and texts scattered over the buffer; the same for the same seed.
static void DrawRandomPage(uint32_t seed) {
    std::mt19937 random(seed);
    const auto number = [&](int32_t low, int32_t high) {
        return low + static_cast<int32_t>(random() % static_cast<uint32_t>(high - low + 1));
    };
    constexpr const wchar_t* kTexts[] = {L"Position",      L"X", L"0.00",
                                         L"Přítel 🙂", L" ", L"Add Component..."};
    for (int32_t i = 0; i < 40; ++i) {
        const int32_t left = number(-20, 290), top = number(-10, 95);
        FillRect({left, top, left + number(5, 120), top + number(5, 40)},
                 number(0, 1) == 0 ? kGround : Pixel{0x312924});
        DrawText(number(-30, 310), number(-20, 105), kTexts[number(0, 5)],
                 number(0, 1) == 0 ? kInk : TextColor{0xFCF8F5}, number(8, 24),
                 number(0, 1) == 0 ? 400 : 600);
    }
}

TEST_CASE("pages of random boxes and texts are the same with and without cached texts") {
    for (uint32_t seed = 1; seed <= 50; ++seed) {
        CAPTURE(seed);
        StartTexts();
        frameBuffer.cachesTexts = false;
        DrawRandomPage(seed);
        const std::vector<Pixel> plain = headless.pixels;
        frameBuffer.cachesTexts = true;
        size_t drawn = 0;
        for (int32_t round = 0; round < 3; ++round) {
            Clear(kGround);
            drawn = SystemTexts([=] { DrawRandomPage(seed); });
            CHECK(headless.pixels == plain);
        }
        CHECK(drawn < 40);  // some were kept
    }
}

TEST_CASE("frames of the whole editor are the same with and without cached texts") {
    void (*changes[])() = {
        [] {},
        [] { editorState.selectedIndex = 0; },
        [] { addText(); },
        [] {
            editorState.menu = PopupMenu{.kind = MenuKind::Create, .corner{200, 100}};
        },
        [] { editorState.nameEntry = {.kind = NameEntry::Kind::Object, .target = 2, .text = L"Žluťoučký"}; },
        [] { editorState.playMode = true; },
    };
    for (const auto change : changes) {
        StartPicture(900, 500);
        headless.paintsTexts = true;
        headless.clientSize = {900, 500};
        editorState = EditorState{};
        resetScene(true);
        change();
        RenderFrame();
        const std::vector<Pixel> plain = headless.pixels;
        const size_t all = headless.texts.size();
        frameBuffer.cachesTexts = true;
        RenderFrame();
        for (int32_t frame = 0; frame < 3; ++frame) {
            const size_t drawn = SystemTexts(RenderFrame);
            CHECK(headless.pixels == plain);
            CHECK(drawn * 4 < all);
        }
    }
}
