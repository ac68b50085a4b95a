#include "scene/long_work.h"

#include "support/editor_input.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <string>

// An editor in which every look at the clock of the work takes that long.
static void StartWithWorkClock(double step) {
    StartEditor();
    headless.texts.clear();
    headless.presents = 0;
    headless.workTimeStep = step;
}

static bool IsShown(const std::wstring& text) {
    return std::ranges::find(headless.texts, text, &DrawnText::text) != headless.texts.end();
}

TEST_CASE("work of less than 0.3 seconds shows nothing and takes no input") {
    StartWithWorkClock(0.1);
    headless.workInput = {{{.kind = InputKind::KeyDown, .key = kKeyEscape}}};
    {
        LongWork work(L"Working", L"things", LongWork::Esc::Cancels);
        CHECK(work.Continue(1, 10));  // 0.1 s
        CHECK(work.Continue(2, 10));  // 0.2 s
    }
    CHECK(headless.presents == 0);
    CHECK(headless.texts.empty());
    CHECK(headless.taskProgress.empty());
    CHECK(headless.workInput.size() == 1);
    CHECK_FALSE(headless.workTookInput);
}

TEST_CASE("longer work shows its progress in a bar over the bottom panel and in the task bar") {
    StartWithWorkClock(0.16);
    const std::vector<Pixel> before = headless.pixels;
    {
        LongWork work(L"Working", L"things");
        work.Continue(1, 4);
        CHECK(headless.presents == 0);
        work.Continue(2, 4);
        CHECK(headless.presents == 1);
        CHECK(IsShown(L"Working: 2 z 4 things"));
        CHECK_FALSE(IsShown(L"Esc: zrusit"));
        work.Continue(4, 4);
        CHECK(IsShown(L"Working: 4 z 4 things"));
        CHECK(headless.taskProgress == std::vector<double>{0.5, 1});
    }
    CHECK(headless.taskProgress.back() < 0);
    const auto rowChanged = [&before](int32_t y) {
        const auto begin = static_cast<ptrdiff_t>(y) * 1360;
        return !std::equal(before.begin() + begin, before.begin() + begin + 1360,
                           headless.pixels.begin() + begin);
    };
    for (int32_t y = 0; y < 820; ++y) CHECK(rowChanged(y) == (y >= 752 && y < 808));
}

TEST_CASE("the bar's length is the share that is done") {
    struct {
        int64_t done, total;
        int32_t pixels;
    } cases[] = {{0, 8, 0}, {2, 8, 327}, {4, 8, 654}, {8, 8, 1308}, {9, 8, 1308}, {3, 0, 0}, {-1, 8, 0}};
    for (const auto& [done, total, pixels] : cases) {
        StartWithWorkClock(1);
        LongWork work(L"Working", L"things");
        work.Continue(done, total);
        const Pixel* row = headless.pixels.data() + ptrdiff_t{790} * 1360;
        CHECK(std::count(row, row + 1360, Pixel{0xE6AA50}) == pixels);
    }
}

TEST_CASE("the bar is drawn at most twenty times a second") {
    StartWithWorkClock(0.001);
    LongWork work(L"Working", L"things");
    for (int64_t i = 1; i <= 1000; ++i) work.Continue(i, 1000);
    CHECK(headless.presents == 14);  // from 0.3 to 1.0 s
}

TEST_CASE("work without news goes on showing what was done last") {
    StartWithWorkClock(1);
    LongWork work(L"Working", L"things");
    work.Continue(2, 4);
    headless.texts.clear();
    work.Continue();
    CHECK(IsShown(L"Working: 2 z 4 things"));
    CHECK(headless.taskProgress == std::vector<double>{0.5, 0.5});
}

TEST_CASE("Esc cancels only work that can be taken back") {
    for (const auto esc : {LongWork::Esc::Cancels, LongWork::Esc::Nothing}) {
        const bool cancels = esc == LongWork::Esc::Cancels;
        StartWithWorkClock(1);
        headless.workInput = {{{.kind = InputKind::KeyDown, .key = 'A'}},
                              {{.kind = InputKind::KeyDown, .key = kKeyEscape}}};
        LongWork work(L"Working", L"things", esc);
        CHECK(work.Continue(1, 10));
        CHECK(IsShown(L"Esc: zrusit") == cancels);
        CHECK(work.Continue() == !cancels);
        CHECK(work.Continue() == !cancels);
        CHECK(work.IsCancelled() == cancels);
        CHECK_FALSE(headless.quitRequested);
    }
}

TEST_CASE("work before the first picture draws nothing") {
    StartWithWorkClock(1);
    ReleaseFrameBuffer();
    LongWork work(L"Working", L"things");
    CHECK(work.Continue(1, 2));
    CHECK(headless.presents == 0);
}
