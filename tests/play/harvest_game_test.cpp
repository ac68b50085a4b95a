#include "play/play_mode.h"
#include "support/sample_project.h"

#include "doctest/doctest.h"

#include <cmath>
#include <string>

static void StartHarvest() {
    OpenSample(L"Harvest");
    StartPlayMode();
}

// Down on the bale, to the apple on the right, through both gaps past the blanket, and on to the last hedge.
// The snail goes along in its lane.
static void Harvest() {
    StartHarvest();
    HoldFor(420, {});     // until the bale has sunk
    HoldFor(200, {'D'});  // past the apple, to the right hedge
    HoldFor(100, {'W'});  // through the first gap, to the second hedge
    for (int32_t lane = 0; lane < 3; ++lane) {
        HoldFor(180, {'A'});  // over the blanket and back
        HoldFor(180, {'D'});
        HoldFor(10, {'S'});
    }
    HoldFor(300, {'A'});
    HoldFor(120, {'W'});  // through the second gap
    HoldFor(900, {'D'});  // on against the right hedge, until the snail is there
}

TEST_CASE("the hedgehog gathers apples at every frame rate, and the snail finds its mushroom") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        Harvest();
        CHECK(Collected(L"Apple") >= 2);
        CHECK(Collected(L"Mushroom") == 1);
        CHECK(Named(L"Hedgehog").position.z > 8.35f + 0.5f);  // behind the second hedge
        CHECK(editorState.score == Collected(L"Apple") + 1);
        CHECK(Named(L"Score").text == L"Score: " + std::to_wstring(editorState.score));
    }
    frameTime = kFrameTimes[0];
}

TEST_CASE("the bale of hay sinks to the meadow with the hedgehog on it") {
    for (const float time : kFrameTimes) {
        CAPTURE(time);
        frameTime = time;
        StartHarvest();
        const float above = Named(L"Hedgehog").position.y - Named(L"Hay lift").position.y;
        HoldFor(60, {});
        CHECK(Named(L"Hay lift").position.y < 1.4f);
        CHECK(Named(L"Hay lift").position.y > 0.8f);  // it takes its time
        HoldFor(420, {});
        CHECK(Named(L"Hay lift").position.y == doctest::Approx(0.3f).epsilon(0.01));
        CHECK(Named(L"Hedgehog").position.y - Named(L"Hay lift").position.y ==
              doctest::Approx(above).epsilon(0.01));
        CHECK(editorState.score == 0);
    }
    frameTime = kFrameTimes[0];
}

TEST_CASE("the hedges keep the hedgehog in the garden and the snail in its lane") {
    for (const char key : {'W', 'A', 'S', 'D'}) {
        CAPTURE(key);
        StartHarvest();
        HoldFor(900, {key});
        const Vec3 hedgehog = Named(L"Hedgehog").position, snail = Named(L"Snail").position;
        CHECK(std::abs(hedgehog.x) < 9.1f);
        CHECK(hedgehog.z > -4.4f);
        CHECK(hedgehog.z < 14.2f);
        CHECK(std::abs(snail.x) < 9.1f);
        CHECK(snail.z > 11.4f);
        CHECK(snail.z < 14.2f);
    }
}

TEST_CASE("the same keys play the harvest to the same scene, to the last bit") {
    CheckPlaysTheSameTwice(Harvest);
}
