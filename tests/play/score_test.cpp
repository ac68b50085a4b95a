#include "play/score.h"

#include "play/play_mode.h"
#include "state/editor_state.h"

#include "doctest/doctest.h"

static void StartWith(Scene scene, int32_t score) {
    editorState = EditorState{};
    editorState.scene = std::move(scene);
    editorState.score = score;
}

TEST_CASE("the score is written into the Text whose name or text speaks of it, in any case") {
    for (const GameObject& shown :
         {GameObject{.name = L"SKORE", .isText = true},
          GameObject{.name = L"Label", .isText = true, .text = L"your sCoRe here"}}) {
        StartWith({{.name = L"Title", .isText = true, .text = L"Game"}, {.name = L"Score cube"}, shown}, 7);
        ShowScore();
        CHECK(editorState.scene[2].text == L"Score: 7");
        CHECK(editorState.scene[0].text == L"Game");
        CHECK(editorState.scene[1].text == L"Text");
    }
}

TEST_CASE("a Text that only nearly speaks of the score is one like any other") {
    for (const wchar_t* nearly : {L"Skor", L"Scor", L"S core", L"Sk ore"}) {
        StartWith({{.name = L"Title", .isText = true}, {.name = nearly, .isText = true, .text = nearly}}, 7);
        ShowScore();
        CHECK(editorState.scene[0].text == L"Score: 7");
        CHECK(editorState.scene[1].text == nearly);
    }
}

TEST_CASE("without such a Text the first active one shows the score") {
    StartWith({{.name = L"Off", .active = false, .isText = true}, {.name = L"On", .isText = true}}, -3);
    ShowScore();
    CHECK(editorState.scene[0].text == L"Text");
    CHECK(editorState.scene[1].text == L"Score: -3");
}

TEST_CASE("an inactive score text is passed over") {
    StartWith({{.name = L"Score", .active = false, .isText = true}, {.name = L"Title", .isText = true}}, 1);
    ShowScore();
    CHECK(editorState.scene[0].text == L"Text");
    CHECK(editorState.scene[1].text == L"Score: 1");
}

TEST_CASE("without a Text the score is shown nowhere") {
    StartWith({{.name = L"Score"}}, 1);
    ShowScore();
    CHECK(editorState.scene[0].text == L"Text");
}

TEST_CASE("a game begins at rest, at time 0 and with score 0 on show") {
    StartWith({{.name = L"Ball", .velocityY = -4, .velocity{1, 2, 3}}, {.name = L"Score", .isText = true}},
              12);
    editorState.animationTime = 9;
    ResetGameState();
    CHECK(editorState.scene[0].velocityY == 0);
    CHECK(editorState.scene[0].velocity == Vec3{});
    CHECK(editorState.animationTime == 0);
    CHECK(editorState.score == 0);
    CHECK(editorState.scene[1].text == L"Score: 0");
}
