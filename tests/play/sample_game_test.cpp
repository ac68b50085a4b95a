#include "formats/scene_file.h"
#include "play/play_mode.h"
#include "support/sample_project.h"

#include "doctest/doctest.h"

#include <cmath>
#include <string>

// Walks to the left wall, from there up and down to the right one in lanes of 1.2 units, and so back again.
// Nothing here looks where the coins lie.
static void PlaySample() {
    OpenSample(L"Project");
    StartPlayMode();
    HoldFor(150, {'A'});
    for (int32_t lane = 0; lane < 26; ++lane) {
        HoldFor(240, {lane % 2 == 0 ? 'W' : 'S'});
        HoldFor(18, {lane < 13 ? 'D' : 'A'});
    }
}

TEST_CASE("the sample's walker collects coins at every frame rate, and each of them counts") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        PlaySample();
        const int32_t taken = Collected(L"Coin");
        CHECK(taken >= 3);
        CHECK(editorState.score == taken);
        CHECK(Named(L"Score").text == L"Score: " + std::to_wstring(taken));
    }
    frameTime = kFrameTimes[0];
}

static void CheckWallsAndCrates() {
    const Vec3 walker = Named(L"Walker").position;
    CHECK(std::abs(walker.x) < 8);
    CHECK(walker.y == doctest::Approx(0.66f - 0.06f + 0.001f));  // half its height above the lawn
    CHECK(walker.z > -4.3f);
    CHECK(walker.z < 10.3f);
    // Half sizes of 0.7, 0.55 and 0.42, from the lawn up, with a gap of 0.001 below each.
    CHECK(Named(L"Crate 1").position.y == doctest::Approx(-0.06f + 0.7f + 0.001f));
    CHECK(Named(L"Crate 2").position.y == doctest::Approx(-0.06f + 1.4f + 0.55f + 0.002f));
    CHECK(Named(L"Crate 3").position.y == doctest::Approx(-0.06f + 2.5f + 0.42f + 0.003f));
}

TEST_CASE("at every frame rate the sample's walls keep the walker in, and its crates rest on each other") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        PlaySample();
        CheckWallsAndCrates();
    }
    frameTime = kFrameTimes[0];
}

TEST_CASE("the same keys play the sample to the same scene, to the last bit") {
    CheckPlaysTheSameTwice(PlaySample);
}

static void PlayLevel2() {
    OpenSample(L"Project");
    REQUIRE(LoadScene(InSample(L"Files\\Scenes\\Level2.scene")));
    StartPlayMode();
    HoldFor(240, {'D'});
    HoldFor(75, {'W'});
    CHECK(editorState.score == 0);
    HoldFor(240, {'A'});
    HoldFor(75, {'W'});
    HoldFor(240, {'D'});
    HoldFor(84, {'W'});
    CHECK(editorState.score == 0);
    HoldFor(240, {'A'});
    CHECK(editorState.score == 1);
    CHECK_FALSE(Named(L"Treasure").active);
}

TEST_CASE("behind the hedges of the sample's second scene lies a treasure that counts once") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        PlayLevel2();
    }
    frameTime = kFrameTimes[0];
}
