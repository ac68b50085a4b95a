#include "app/current_layout.h"

#include "render/frame_buffer.h"
#include "support/capture.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

TEST_CASE("every screen has the window's size, and the picture's while the window is minimised") {
    const struct {
        ClientSize window, shown;
    } cases[] = {{{640, 360}, {640, 360}}, {{1, 1}, {1, 1}},       {{1, 360}, {1, 360}},
                 {{640, 1}, {640, 1}},     {{0, 360}, {800, 600}}, {{640, 0}, {800, 600}},
                 {{-1, 360}, {800, 600}},  {{0, 0}, {800, 600}}};
    for (const auto& [window, shown] : cases) {
        CAPTURE(window.width);
        CAPTURE(window.height);
        editorState = EditorState{};
        frameBuffer.width = 800;
        frameBuffer.height = 600;
        headless.clientSize = window;
        CHECK(ClientSize{CurrentLayout().width, CurrentLayout().height} == shown);
        CHECK(ClientSize{CurrentHubLayout().width, CurrentHubLayout().height} == shown);
        CHECK(ClientSize{CurrentBlueprintLayout().width, CurrentBlueprintLayout().height} == shown);
    }
}

TEST_CASE("the game fills the window, the editor's view lies between the panels") {
    editorState = EditorState{};
    headless.clientSize = {1360, 820};
    CHECK(CurrentLayout().viewport == Rect{230, 42, 1040, 688});
    editorState.runtimeMode = true;
    CHECK(CurrentLayout().viewport == Rect{0, 0, 1360, 820});
}
