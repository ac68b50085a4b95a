#include "editor/layout.h"

#include "support/capture.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

#include <cstdint>
#include <initializer_list>

// The sizes after fitting, as one value.
static PanelLayout Fitted(PanelLayout panels, int32_t width, int32_t height) {
    return FitPanelsToWindow(panels, width, height);
}

TEST_CASE("the panels start 230, 320 and 132 pixels large, with a bar of 42 above them") {
    const EditorLayout layout = LayoutEditor({}, 1360, 820);
    CHECK(layout.width == 1360);
    CHECK(layout.height == 820);
    CHECK(layout.bottomTop == 688);
    CHECK(layout.inspectorLeft == 1040);
    CHECK(layout.topBar == Rect{0, 0, 1360, 42});
    CHECK(layout.hierarchy == Rect{0, 42, 230, 688});
    CHECK(layout.inspector == Rect{1040, 42, 1360, 688});
    CHECK(layout.viewport == Rect{230, 42, 1040, 688});
    CHECK(layout.bottom == Rect{0, 688, 1360, 820});
}

TEST_CASE("the bottom panel never begins above the end of the top bar") {
    CHECK(LayoutEditor({.bottomHeight = 132}, 800, 174).bottomTop == 42);
    CHECK(LayoutEditor({.bottomHeight = 132}, 800, 175).bottomTop == 43);
    const EditorLayout layout = LayoutEditor({.bottomHeight = 132}, 800, 100);
    CHECK(layout.bottomTop == 42);
    CHECK(layout.bottom == Rect{0, 42, 800, 100});
    CHECK(layout.hierarchy == Rect{0, 42, 230, 42});
}

TEST_CASE("the Inspector never begins left of the window") {
    CHECK(LayoutEditor({}, 319, 600).inspectorLeft == 0);
    CHECK(LayoutEditor({}, 320, 600).inspectorLeft == 0);
    CHECK(LayoutEditor({}, 321, 600).inspectorLeft == 1);
}

TEST_CASE("the viewport lies inside the window, whatever the window and the panels") {
    const PanelLayout sizes[] = {{}, {0, 0, 96}, {5000, 5000, 5000}, {170, 320, 96}, {1000, 320, 700}};
    const struct {
        int32_t width, height;
    } windows[] = {{1, 1}, {1, 900}, {900, 1}, {220, 200}, {221, 258}, {300, 200}, {4000, 3000}, {0, 0}};
    for (const PanelLayout& panels : sizes) {
        for (const auto& [width, height] : windows) {
            const Rect viewport = LayoutEditor(panels, width, height).viewport;
            CAPTURE(width);
            CAPTURE(height);
            CHECK(viewport.left >= 0);
            CHECK(viewport.top >= 0);
            CHECK(viewport.left <= viewport.right);
            CHECK(viewport.top <= viewport.bottom);
            CHECK(viewport.right <= width);
            CHECK(viewport.bottom <= height);
        }
    }
}

TEST_CASE("sizes that fit are left as they are") {
    CHECK(Fitted({}, 1360, 820) == PanelLayout{230, 320, 132});
    CHECK(Fitted({400, 740, 658}, 1360, 820) == PanelLayout{400, 740, 658});  // 220 and 162 remain
}

TEST_CASE("no panel is smaller than its least size") {
    CHECK(Fitted({10, 20, 30}, 1360, 820) == PanelLayout{170, 320, 96});
    CHECK(Fitted({-500, -500, -500}, 1360, 820) == PanelLayout{170, 320, 96});
    CHECK(Fitted({169, 319, 95}, 1360, 820) == PanelLayout{170, 320, 96});
}

TEST_CASE("the bottom panel leaves 162 pixels of the height") {
    CHECK(Fitted({.bottomHeight = 5000}, 1360, 820).bottomHeight == 658);
    CHECK(Fitted({.bottomHeight = 659}, 1360, 820).bottomHeight == 658);
}

TEST_CASE("a window less than 258 pixels high keeps the bottom panel at 96, even up to the top bar") {
    CHECK(Fitted({.bottomHeight = 132}, 1360, 259).bottomHeight == 97);
    for (const int32_t height : {258, 257, 200, 138, 137, 1}) {
        const PanelLayout panels = Fitted({.bottomHeight = 132}, 1360, height);
        CAPTURE(height);
        CHECK(panels.bottomHeight == 96);
        CHECK(LayoutEditor(panels, 1360, height).bottomTop == (height < 138 ? 42 : height - 96));
    }
}

TEST_CASE("a window of 220 pixels or less has no side panels, and its Inspector begins at the right edge") {
    for (const int32_t width : {1, 100, 220}) {
        const PanelLayout panels = Fitted({}, width, 600);
        CAPTURE(width);
        CHECK(panels.hierarchyWidth == 0);
        CHECK(panels.inspectorWidth == 0);
        CHECK(panels.bottomHeight == 132);
        CHECK(LayoutEditor(panels, width, 600).inspectorLeft == width);
    }
    CHECK(Fitted({}, 221, 600) == PanelLayout{170, 320, 132});  // 489 over: cut down to the least sizes
}

TEST_CASE("side panels that were gone come back with their least sizes") {
    CHECK(Fitted({0, 0, 132}, 1360, 820) == PanelLayout{170, 320, 132});
}

TEST_CASE("the Inspector gives way before the Hierarchy, and neither below its least size") {
    // 1000 wide: 780 for both.
    struct {
        int32_t hierarchy, inspector, fittedHierarchy, fittedInspector;
    } cases[] = {
        {400, 380, 400, 380},  // exactly
        {401, 380, 401, 379},  // one too many
        {400, 700, 400, 380},  // the Inspector alone gives way
        {460, 700, 460, 320},  // down to its least
        {500, 700, 460, 320},  // then the Hierarchy
        {900, 320, 460, 320},  // limited to 780 first
        {5000, 5000, 460, 320},
    };
    for (const auto& [hierarchy, inspector, fittedHierarchy, fittedInspector] : cases) {
        CAPTURE(hierarchy);
        CAPTURE(inspector);
        CHECK(Fitted({hierarchy, inspector, 132}, 1000, 820) ==
              PanelLayout{fittedHierarchy, fittedInspector, 132});
    }
    // 600 wide: 380 for both, which is less than their least sizes.
    CHECK(Fitted({230, 320, 132}, 600, 820) == PanelLayout{170, 320, 132});
}

TEST_CASE("without a client area the sizes stay") {
    const PanelLayout panels{5, 6, 7};
    CHECK(Fitted(panels, 0, 820) == panels);
    CHECK(Fitted(panels, 1360, 0) == panels);
    CHECK(Fitted(panels, -1, -1) == panels);
}

TEST_CASE("fitting twice changes nothing more") {
    for (int32_t width = 1; width < 1500; width += 13) {
        for (const int32_t size : {-5, 0, 170, 333, 720, 4000}) {
            const PanelLayout once = Fitted({size, 4000 - size, size}, width, width / 2 + 1);
            CHECK(Fitted(once, width, width / 2 + 1) == once);
        }
    }
}

TEST_CASE("an edge is grabbed three pixels to each side, the far one excluded") {
    const PanelLayout panels;
    const auto hit = [&panels](int32_t x, int32_t y) {
        return NumberOf(SplitterHitTest({x, y}, panels, 1360, 820));
    };
    struct {
        int32_t x, y, edge;
    } cases[] = {
        {226, 300, 0},  {227, 300, 1},  {232, 300, 1},  {233, 300, 0},   // the Hierarchy's right edge
        {1036, 300, 0}, {1037, 300, 2}, {1042, 300, 2}, {1043, 300, 0},  // the Inspector's left edge
        {600, 684, 0},  {600, 685, 3},  {600, 690, 3},  {600, 691, 0},   // the bottom panel's top
        {230, 41, 0},   {230, 42, 1},   {1040, 41, 0},  {1040, 42, 2},   // they begin below the top bar
        {0, 688, 3},    {-1, 688, 0},   {1359, 688, 3}, {1360, 688, 0},  // and end with the window
    };
    for (const auto& [x, y, edge] : cases) {
        CAPTURE(x);
        CAPTURE(y);
        CHECK(hit(x, y) == edge);
    }
}

TEST_CASE("at a corner the upright edge wins above the bottom panel's top, the level one from there on") {
    const PanelLayout panels;
    CHECK(NumberOf(SplitterHitTest({232, 687}, panels, 1360, 820)) == 1);
    CHECK(NumberOf(SplitterHitTest({232, 688}, panels, 1360, 820)) == 3);
    CHECK(NumberOf(SplitterHitTest({1040, 687}, panels, 1360, 820)) == 2);
    CHECK(NumberOf(SplitterHitTest({1040, 688}, panels, 1360, 820)) == 3);
}

TEST_CASE("where both upright edges meet, the Hierarchy's wins") {
    CHECK(NumberOf(SplitterHitTest({230, 300}, {230, 320, 132}, 550, 820)) == 1);
}

TEST_CASE("the Inspector's band begins at its left edge, between the bars, and has no right end") {
    const EditorLayout layout = LayoutEditor({}, 1360, 820);
    const struct {
        Point at;
        bool isInside;
    } cases[] = {{{1039, 300}, false}, {{1040, 300}, true}, {{1360, 300}, true}, {{100000, 300}, true},
                 {{1200, 41}, false},  {{1200, 42}, true},  {{1200, 687}, true}, {{1200, 688}, false}};
    for (const auto& [at, isInside] : cases) {
        CAPTURE(at);
        CHECK(IsInInspectorBand(at, layout) == isInside);
    }
}
