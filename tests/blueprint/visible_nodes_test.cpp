#include "blueprint/visible_nodes.h"

#include "blueprint/blueprint_layout.h"
#include "editor/widgets.h"
#include "support/capture.h"
#include "support/picture.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <set>
#include <utility>

constexpr Rect kCanvas{230, 44, 1080, 820};

using NodeList = std::vector<BlueprintNode>;
using VisibleList = std::vector<VisibleNode>;

TEST_CASE("of nodes in one place only the topmost is visible") {
    NodeList nodes;
    for (int32_t i = 0; i < 10000; ++i) nodes.push_back({.id = i + 1, .x = 100, .y = 100});
    CHECK(VisibleNodes(nodes, kCanvas) == VisibleList{{.index = 9999}});
}

TEST_CASE("nodes apart from each other are all visible, listed from the lowest to the topmost") {
    const NodeList nodes{{.x = 10, .y = 10}, {.x = 300, .y = 10}, {.x = 10, .y = 300}};
    CHECK(VisibleNodes(nodes, kCanvas) == VisibleList{{.index = 0}, {.index = 1}, {.index = 2}});
    CHECK(VisibleNodes({}, kCanvas).empty());
}

TEST_CASE("a node off the canvas is visible as long as its shadow is") {
    struct {
        int32_t x, y;
        bool visible;
    } cases[] = {
        {-193, 100, true},       {-194, 100, false},  // its shadow reaches 4 pixels to the right
        {849, 100, true},        {850, 100, false},   // the canvas is 850 wide
        {100, -86, true},        {100, -87, false},   // and 5 below
        {100, 775, true},        {100, 776, false},   // and 776 high
        {INT32_MIN, 100, false}, {INT32_MAX, INT32_MAX, false},
    };
    for (const auto& [x, y, visible] : cases) {
        CAPTURE(x);
        CAPTURE(y);
        CHECK(VisibleNodes(NodeList{{.x = x, .y = y}}, kCanvas).empty() == !visible);
    }
}

TEST_CASE("a single pixel that no later node covers keeps a node, but not its texts") {
    // The later two leave the first one its top left pixel.
    const NodeList nodes{{.x = 100, .y = 100}, {.x = 101, .y = 100}, {.x = 100, .y = 101}};
    CHECK(VisibleNodes(nodes, kCanvas) == VisibleList{{.index = 0, .title = false, .labels = false},
                                                      {.index = 1, .title = false, .labels = false},
                                                      {.index = 2}});
    const NodeList covered{
        {.x = 100, .y = 100}, {.x = 101, .y = 100}, {.x = 100, .y = 101}, {.x = 100, .y = 100}};
    const VisibleList visible = VisibleNodes(covered, kCanvas);
    REQUIRE_FALSE(visible.empty());
    CHECK(visible.front().index == 1);
}

TEST_CASE("a title that is half under another node is visible") {
    const NodeList nodes{{.x = 100, .y = 100}, {.x = 150, .y = 90}};
    CHECK(VisibleNodes(nodes, kCanvas) == VisibleList{{.index = 0}, {.index = 1}});
    const NodeList lower{{.x = 100, .y = 100}, {.x = 100, .y = 130}};  // title free, labels hidden
    CHECK(VisibleNodes(lower, kCanvas) == VisibleList{{.index = 0, .labels = false}, {.index = 1}});
}

TEST_CASE("a node hides exactly the pixels that it and its shadow fill") {
    constexpr Pixel kBackground{0xFFFFFF};
    const BlueprintNode upper{.x = 100, .y = 100};
    StartPicture(700, 400, kBackground);
    DrawButton(NodeRect(upper), Pixel{0}, Pixel{0}, true);
    int32_t wrong = 0;
    for (int32_t y = 134; y < 244; ++y) {
        for (int32_t x = 320; x < 534; ++x) {
            // A canvas of this one pixel, in the middle of a lower node.
            const NodeList nodes{{.x = x - 230 - 90, .y = y - 44 - 40}, upper};
            const VisibleList visible = VisibleNodes(nodes, {x, y, x + 1, y + 1});
            const bool isLowerVisible = !visible.empty() && visible.front().index == 0;
            if (isLowerVisible != (PixelAt(x, y) == kBackground)) ++wrong;
        }
    }
    CHECK(wrong == 0);
}

TEST_CASE("everything outside the area counts as covered, and at first nothing inside") {
    const CanvasCover cover = StartCover({230, 44, 520, 200});
    CHECK_FALSE(IsCovered(cover, {230, 44, 231, 45}));
    CHECK_FALSE(IsCovered(cover, {519, 199, 520, 200}));
    CHECK_FALSE(IsCovered(cover, {0, 0, 1000, 1000}));
    CHECK(IsCovered(cover, {0, 44, 230, 200}));
    CHECK(IsCovered(cover, {520, 44, 900, 200}));
    CHECK(IsCovered(cover, {230, 0, 520, 44}));
    CHECK(IsCovered(cover, {230, 200, 520, 900}));
    CHECK(IsCovered(cover, {300, 100, 300, 200}));
}

TEST_CASE("an empty area is covered") {
    for (const Rect& area : {Rect{}, Rect{230, 44, 520, 44}, Rect{230, 44, 150, 600}}) {
        CanvasCover cover = StartCover(area);
        CHECK(IsCovered(cover, {-9, -9, 999, 999}));
        Cover(cover, {-9, -9, 999, 999});
    }
}

TEST_CASE("random rectangles are covered exactly when each of their pixels is") {
    RandomSource random(20261121);
    for (int32_t run = 0; run < 200; ++run) {
        CAPTURE(run);
        const Rect area{7, -3, 7 + random.IntBetween(1, 200), random.IntBetween(1, 12)};
        CanvasCover cover = StartCover(area);
        std::set<std::pair<int32_t, int32_t>> pixels;
        for (int32_t step = 0; step < 20; ++step) {
            const int32_t left = random.IntBetween(-20, 220), top = random.IntBetween(-8, 14);
            const Rect rect{left, top, left + random.IntBetween(1, 130), top + random.IntBetween(1, 8)};
            bool expected = true;
            for (int32_t y = rect.top; y < rect.bottom; ++y) {
                for (int32_t x = rect.left; x < rect.right; ++x) {
                    if (Contains(area, {x, y})) expected = expected && pixels.contains({x, y});
                }
            }
            CHECK(IsCovered(cover, rect) == expected);
            if (random.OneIn(2)) continue;
            Cover(cover, rect);
            for (int32_t y = rect.top; y < rect.bottom; ++y) {
                for (int32_t x = rect.left; x < rect.right; ++x) pixels.insert({x, y});
            }
        }
    }
}
