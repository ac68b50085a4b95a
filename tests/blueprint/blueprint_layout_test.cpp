#include "blueprint/blueprint_layout.h"

#include "support/capture.h"

#include "doctest/doctest.h"

TEST_CASE("the canvas lies between palette and details, and stays 290 wide in a narrow window") {
    struct {
        int32_t width, height;
        Rect canvas, details;
    } cases[] = {
        {1360, 820, {230, 44, 1080, 820}, {1080, 44, 1360, 820}},
        {801, 600, {230, 44, 521, 600}, {521, 44, 801, 600}},
        {800, 600, {230, 44, 520, 600}, {520, 44, 800, 600}},
        {799, 600, {230, 44, 520, 600}, {520, 44, 799, 600}},
        {520, 600, {230, 44, 520, 600}, {520, 44, 520, 600}},
        {300, 200, {230, 44, 520, 200}, {520, 44, 520, 200}},
        {300, 44, {230, 44, 520, 44}, {520, 44, 520, 44}},
        {1, 1, {230, 44, 520, 44}, {520, 44, 520, 44}},
        {3840, 2160, {230, 44, 3560, 2160}, {3560, 44, 3840, 2160}},
    };
    for (const auto& [width, height, canvas, details] : cases) {
        CAPTURE(width);
        CAPTURE(height);
        const BlueprintLayout layout = LayoutBlueprint(width, height);
        CHECK(layout.canvas == canvas);
        CHECK(layout.details == details);
        CHECK(layout.topBar == Rect{0, 0, width, 44});
        CHECK(layout.palette == Rect{0, 44, 230, canvas.bottom});
    }
}

TEST_CASE("a node is 190 by 82 pixels, and places count from the corner of the canvas") {
    CHECK(NodeRect({.x = 0, .y = 0}) == Rect{230, 44, 420, 126});
    CHECK(NodeRect({.x = -300, .y = 500}) == Rect{-70, 544, 120, 626});
}

TEST_CASE("a node whose pixels would exceed 32 bits lies beyond the canvas") {
    const Rect canvas = LayoutBlueprint(1360, 820).canvas;
    for (const int32_t far : {INT32_MIN, INT32_MAX}) {
        const Rect across = NodeRect({.x = far, .y = 100}), down = NodeRect({.x = 100, .y = far});
        CHECK((across.right <= canvas.left || across.left >= canvas.right));
        CHECK((down.bottom <= canvas.top || down.top >= canvas.bottom));
        CHECK(Width(across) == 190);
        CHECK(Height(down) == 82);
    }
}

TEST_CASE("the node under a point of the canvas is the last one there") {
    const BlueprintLayout layout = LayoutBlueprint(1360, 820);
    const std::vector<BlueprintNode> nodes{{.x = 100, .y = 100}, {.x = 150, .y = 120}, {.x = -50, .y = 300}};
    struct {
        Point at;
        int32_t node;
    } cases[] = {
        {{330, 144}, 0},  {{329, 144}, -1}, {{330, 143}, -1}, {{379, 200}, 0},
        {{380, 164}, 1},  {{519, 225}, 1},  {{569, 245}, 1},  {{570, 245}, -1},
        {{569, 246}, -1}, {{519, 163}, 0},  {{520, 163}, -1},  // right of the first, above the second
        {{230, 350}, 2},  {{229, 350}, -1},                    // the part under the palette
        {{369, 425}, 2},  {{370, 425}, -1}, {{369, 426}, -1},
    };
    for (const auto& [at, node] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        CHECK(NodeAt(at, nodes, layout) == node);
    }
    CHECK(NodeAt({400, 400}, {}, layout) == -1);
}

TEST_CASE("a link leads across to the middle, down, and across to the next node") {
    const Rect canvas{230, 44, 1080, 820};
    // From (410 + 130, 109 + 120) to (240 + 430, 109 + 220): the middle column is 605.
    const auto right = LinkSegments({.x = 130, .y = 120}, {.x = 430, .y = 220}, canvas);
    CHECK(right[0] == Rect{540, 229, 606, 230});
    CHECK(right[1] == Rect{605, 229, 606, 330});
    CHECK(right[2] == Rect{605, 329, 671, 330});
    // Backwards and up: from (840, 329) to (370, 229), the middle column is 605.
    const auto left = LinkSegments({.x = 430, .y = 220}, {.x = 130, .y = 120}, canvas);
    CHECK(left[0] == Rect{605, 329, 841, 330});
    CHECK(left[1] == Rect{605, 229, 606, 330});
    CHECK(left[2] == Rect{370, 229, 606, 230});
}

TEST_CASE("a link is clipped to the canvas, and its middle is right even for the farthest nodes") {
    const Rect canvas{230, 44, 1080, 820};
    const auto isEmpty = [](const Rect& r) { return r.left >= r.right || r.top >= r.bottom; };
    // Above the canvas: only what comes down to the second node is left.
    const auto above = LinkSegments({.x = 0, .y = -500}, {.x = 400, .y = 100}, canvas);
    CHECK(isEmpty(above[0]));
    CHECK(above[1] == Rect{525, 44, 526, 210});
    CHECK(above[2] == Rect{525, 209, 641, 210});
    // From x 2,147,483,647 to -2,147,483,648 the middle is (410 + 240 - 1) / 2.
    const auto far = LinkSegments({.x = INT32_MAX, .y = 0}, {.x = INT32_MIN, .y = 100}, canvas);
    CHECK(far[0] == Rect{324, 109, 1080, 110});
    CHECK(far[1] == Rect{324, 109, 325, 210});
    CHECK(far[2] == Rect{230, 209, 325, 210});
    for (const Rect& segment :
         LinkSegments({.x = INT32_MAX, .y = INT32_MAX}, {.x = INT32_MAX, .y = INT32_MIN}, canvas)) {
        CHECK(isEmpty(segment));
    }
}

TEST_CASE("the Add Node menu stays 8 pixels inside the window and below the top bar") {
    struct {
        int32_t width, height;
        Point corner;
        Rect menu;
    } cases[] = {
        {1360, 820, {400, 300}, {400, 300, 590, 422}},
        {1360, 820, {1079, 300}, {1079, 300, 1269, 422}},
        {1360, 820, {230, 53}, {230, 53, 420, 175}},
        {1360, 820, {230, 52}, {230, 52, 420, 174}},
        {1360, 820, {230, 44}, {230, 52, 420, 166}},
        {1360, 820, {400, 690}, {400, 690, 590, 812}},
        {1360, 820, {400, 819}, {400, 690, 590, 812}},
        {520, 600, {519, 599}, {322, 470, 512, 592}},
        {520, 600, {322, 470}, {322, 470, 512, 592}},
        {300, 200, {299, 199}, {102, 70, 292, 192}},
        {300, 150, {299, 149}, {102, 52, 292, 142}},
        {150, 820, {400, 300}, {8, 300, 142, 422}},  // made narrow while it was open
    };
    for (const auto& [width, height, corner, menu] : cases) {
        CAPTURE(corner.x);
        CAPTURE(corner.y);
        CHECK(AddNodeMenuRect(corner, width, height) == menu);
    }
    const Rect none = AddNodeMenuRect({240, 45}, 300, 50);
    CHECK(none.bottom < none.top);
}

TEST_CASE("a node is added at the corner of the menu, within its own limits") {
    struct {
        int32_t width, height;
        Point corner, place;
    } cases[] = {
        {1360, 820, {500, 300}, {270, 256}}, {1360, 820, {230, 44}, {12, 12}},
        {1360, 820, {242, 56}, {12, 12}},    {1360, 820, {243, 57}, {13, 13}},
        {1360, 820, {870, 720}, {640, 676}},  // 1080 - 440, 820 - 144
        {1360, 820, {869, 719}, {639, 675}}, {1360, 820, {1079, 819}, {640, 676}},
        {300, 200, {299, 199}, {69, 56}},    {520, 200, {519, 199}, {80, 56}},
        {300, 156, {299, 150}, {69, 12}},    {300, 100, {299, 99}, {69, 12}},
    };
    for (const auto& [width, height, corner, place] : cases) {
        CAPTURE(corner.x);
        CAPTURE(corner.y);
        CHECK(PlaceOfAddedNode(corner, LayoutBlueprint(width, height)) == place);
    }
}

TEST_CASE("a dragged node follows the pointer from anywhere, within its own limits") {
    struct {
        int32_t width, height;
        Point pointer, place;
    } cases[] = {
        {1360, 820, {500, 300}, {260, 236}},  // 10 and 20 pixels from its corner
        {1360, 820, {248, 72}, {8, 8}},
        {1360, 820, {249, 73}, {9, 9}},
        {1360, 820, {-5000, -5000}, {8, 8}},
        {1360, 820, {888, 746}, {648, 682}},  // 1080 - 432, 820 - 138
        {1360, 820, {887, 745}, {647, 681}},
        {1360, 820, {5000, 5000}, {648, 682}},
        {1360, 820, {INT32_MIN, INT32_MIN}, {8, 8}},
        {1360, 820, {INT32_MAX, INT32_MAX}, {648, 682}},
        {300, 200, {5000, 5000}, {88, 62}},
        {300, 146, {5000, 5000}, {88, 8}},
        {300, 100, {5000, 5000}, {88, 8}},
    };
    for (const auto& [width, height, pointer, place] : cases) {
        CAPTURE(pointer.x);
        CAPTURE(pointer.y);
        CHECK(PlaceOfDraggedNode(pointer, {10, 20}, LayoutBlueprint(width, height)) == place);
    }
}
