#include "formats/scene_file.h"
#include "play/play_mode.h"
#include "support/sample_project.h"

#include "doctest/doctest.h"

#include <cmath>
#include <string>

// True when the diving bell stands on a solid with this top. Resting objects hover by at most 0.001.
static bool BellRestsOn(float top) {
    const float gap = Named(L"Diving bell").position.y - 0.62f - top;
    return gap > 0 && gap < 0.0011f;
}

// From one end of each ledge to the other and down, to the ground, in about three quarters of a minute.
static void Dive() {
    OpenSample(L"Dive");
    StartPlayMode();
    HoldFor(200, {'A'});  // to the left end of the first ledge
    HoldFor(480, {'D'});  // along it, off its right end and down beside the right wall
    HoldFor(480, {'A'});
    HoldFor(480, {'D'});
    HoldFor(600, {'A'});  // down to the ground, beside the left wall
    HoldFor(200, {'D'});  // against the chest
}

TEST_CASE("the diving bell gathers pearls at every frame rate, and opens the chest on the ground") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        Dive();
        CHECK(Collected(L"Pearl") >= 5);
        CHECK(Collected(L"Lid") == 1);
        CHECK(editorState.score == Collected(L"Pearl") + 1);
        CHECK(Named(L"Score").text == L"Score: " + std::to_wstring(editorState.score));
        CHECK(BellRestsOn(-30));
        CHECK(std::abs(Named(L"Diving bell").position.x - -4.6f) < 2);
    }
    frameTime = kFrameTimes[0];
}

TEST_CASE("left alone the diving bell comes to rest on the first ledge") {
    OpenSample(L"Dive");
    StartPlayMode();
    HoldFor(300, {});
    CHECK(BellRestsOn(-1.6f));
    CHECK(Named(L"Diving bell").position.x == 0);
    CHECK(editorState.score == 0);
}

TEST_CASE("invisible walls keep the diving bell in the plane of the pearls") {
    for (const wchar_t* scene : {L"Main", L"Reef"}) {
        for (const char key : {'W', 'S'}) {
            OpenSample(L"Dive");
            REQUIRE(LoadScene(InSample(L"Files\\Scenes\\" + std::wstring(scene) + L".scene")));
            StartPlayMode();
            HoldFor(300, {key});
            CHECK(std::abs(Named(L"Diving bell").position.z) > 0.1f);
            CHECK(std::abs(Named(L"Diving bell").position.z) < 0.2f);
        }
    }
}

TEST_CASE("the same keys dive to the same scene, to the last bit") {
    CheckPlaysTheSameTwice(Dive);
}

// To and fro over the reef, for a minute and a half.
static void PlayReef() {
    OpenSample(L"Dive");
    REQUIRE(LoadScene(InSample(L"Files\\Scenes\\Reef.scene")));
    StartPlayMode();
    for (int32_t i = 0; i < 15; ++i) HoldFor(360, {i % 2 == 0 ? 'A' : 'D'});
}

static void CheckReef() {
    CHECK(Collected(L"Star") >= 3);
    CHECK(editorState.score == Collected(L"Star"));
    int32_t falling = 0;
    for (const GameObject& object : editorState.scene) {
        if (object.name != L"Star" || !object.active) continue;
        CHECK(std::abs(object.position.x) < 6.1f);
        if (object.position.y > -3.6f - 0.5f) ++falling;  // the sand, and half a star
    }
    CHECK(falling >= 2);  // one for each of the panes from which they come
    CHECK(falling <= 4);  // and those that are just leaving
    CHECK(Named(L"Diving bell").position.y == -1.6f);
}

TEST_CASE("over the reef the diving bell catches starfish, and those that it misses sink into the sand") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        PlayReef();
        CheckReef();
    }
    frameTime = kFrameTimes[0];
}
