#include "scene/long_work.h"

#include "platform/clock.h"
#include "platform/window.h"
#include "render/frame_buffer.h"

#include <algorithm>
#include <new>
#include <string>

constexpr double kShownAfter = 0.3;  // seconds
constexpr double kTurn = 0.05;       // seconds from one picture of the bar to the next

constexpr Pixel kFill{0x251F1C}, kEdge{0x4A3E36}, kTrough{0x15120F}, kDone{0xE6AA50};
constexpr TextColor kText{0xE6EEEB}, kHint{0xB0A49A};
constexpr int32_t kHeight = 56, kMargin = 12, kInset = 14;  // pixels

// Over the lower end of the bottom panel.
static Rect Box() {
    const int32_t bottom = frameBuffer.height - kMargin;
    return {kMargin, bottom - kHeight, frameBuffer.width - kMargin, bottom};
}

static double Share(int64_t done, int64_t total) {
    if (total <= 0) return 0;
    return std::clamp(static_cast<double>(done) / static_cast<double>(total), 0.0, 1.0);
}

static void DrawBar(const std::wstring& text, double share, bool mayCancel) {
    const Rect box = Box();
    const Rect bar{box.left + kInset, box.top + 34, box.right - kInset, box.top + 44};
    if (frameBuffer.pixels == nullptr || Width(bar) < 1) return;  // before the first picture
    DrawPanelBox(box, kFill, kEdge);
    DrawText(bar.left, box.top + 10, text, kText, 14, 600);
    if (mayCancel) DrawText(bar.right - 80, box.top + 10, L"Esc: zrusit", kHint, 13, 400);
    FillRect(bar, kTrough);
    const auto width = static_cast<int32_t>(Width(bar) * share);
    FillRect({bar.left, bar.top, bar.left + width, bar.bottom}, kDone);
    Present();
}

LongWork::LongWork(const wchar_t* whatIsDone, const wchar_t* whatIsCounted, Esc esc)
    : label(whatIsDone),
      unit(whatIsCounted),
      mayCancel(esc == Esc::Cancels),
      nextTurn(WorkSeconds() + kShownAfter) {}

// What was pressed until now is dropped too: it was meant for a program that did not answer.
LongWork::~LongWork() {
    if (!isShown) return;
    DropInput();
    ShowTaskProgress(-1);
}

// Looks at the clock, and twenty times a second draws the bar straight into the window: the frame loop stands
// still during the work, so nobody else would. The panels stay as they were, because the state may be half
// changed. Input is taken off the queue meanwhile, and Esc is all that is looked for in it.
bool LongWork::Continue(int64_t done, int64_t total) {
    lastDone = done;
    lastTotal = total;
    const double now = WorkSeconds();
    if (isCancelled || now < nextTurn) return !isCancelled;
    nextTurn = now + kTurn;
    isShown = true;
    try {
        std::wstring text = label;
        if (total > 0) text += L": " + std::to_wstring(done) + L" z " + std::to_wstring(total) + L" " + unit;
        DrawBar(text, Share(done, total), mayCancel);
    } catch (const std::bad_alloc&) {  // the work may go on without its bar
    }
    ShowTaskProgress(Share(done, total));
    isCancelled = DropInput() && mayCancel;
    return !isCancelled;
}
