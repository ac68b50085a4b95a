#include "viewport/scene_drawing.h"

#include "render/frame_buffer.h"
#include "support/editor_input.h"

#include "doctest/doctest.h"

#include <vector>

static std::vector<Pixel> PictureWith(int32_t selected, bool nearIsActive) {
    editorState.selectedIndex = selected;
    editorState.scene.back().active = nearIsActive;
    RenderFrame();
    return headless.pixels;
}

TEST_CASE(
    "an object that comes later in the scene and stands nearer covers the outline of the selected one") {
    StartEditor();
    // So many, and the farthest first, that they are drawn in another order than the scene's.
    editorState.scene = {
        {.name = L"Far", .position{0, 1.5f, 4}, .scale{1.5f, 1.5f, 1.5f}, .meshIndex = kCubeMesh}};
    for (int32_t i = 0; i < 64; ++i) {
        const Vec3 beside{4, 1, 30 - static_cast<float>(i) / 4};
        editorState.scene.push_back({.position = beside, .scale{0.3f, 0.3f, 0.3f}, .meshIndex = kCubeMesh});
    }
    // Over a corner of the far cube, on the other side than the axes of its gizmo.
    const Vec3 near{-1, 1.2f, 0};
    editorState.scene.push_back({.position = near, .scale{0.5f, 0.5f, 0.5f}, .meshIndex = kCubeMesh});
    const std::vector<Pixel> farAlone = PictureWith(-1, false), both = PictureWith(-1, true),
                             farSelected = PictureWith(0, false), bothFarSelected = PictureWith(0, true);
    const Rect viewport = frameBuffer.viewport;
    int32_t covered = 0, outline = 0;
    for (int32_t y = viewport.top; y < viewport.bottom; ++y) {
        for (int32_t x = viewport.left; x < viewport.right; ++x) {
            const auto i = static_cast<size_t>(y) * 1360 + static_cast<size_t>(x);
            if (farAlone[i] == both[i]) continue;
            ++covered;
            if (farSelected[i] != farAlone[i]) ++outline;
            REQUIRE(bothFarSelected[i] == both[i]);
        }
    }
    CHECK(covered > 1000);
    CHECK(outline > 20);
}
