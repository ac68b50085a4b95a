#include "editor/widgets.h"

#include "base/limit.h"
#include "base/numbers.h"
#include "editor/fit_text.h"
#include "editor/theme.h"
#include "render/frame_buffer.h"

constexpr int32_t kSectionHeight = 26;
constexpr int32_t kSliderLeft = 88, kSliderWidth = 156;

// A bevel of one pixel: light above and on the left, dark below and on the right. Where two edges meet, the
// later one wins the corner.
void DrawBoxEdges(const Rect& rect, Pixel topLeft, Pixel bottomRight) {
    const auto [left, top, right, bottom] = rect;
    FillRect({left, top, right, top + 1}, topLeft);
    FillRect({left, bottom - 1, right, bottom}, bottomRight);
    FillRect({left, top, left + 1, bottom}, topLeft);
    FillRect({right - 1, top, right, bottom}, bottomRight);
}

// The shadow first: it reaches out of the button and lies under it.
void DrawButton(const Rect& rect, Pixel fill, Pixel edge, bool shadow) {
    const auto [left, top, right, bottom] = rect;
    if (shadow) {
        FillRect({left + 4, top + 5, right + 4, bottom + 5}, kButtonOuterShadow);
        FillRect({left + 2, top + 2, right + 2, bottom + 2}, kButtonInnerShadow);
    }
    FillRect(rect, fill);
    DrawBoxEdges(rect, edge, kButtonDarkEdge);
}

void DrawTab(const Rect& rect, const std::wstring& title, bool active) {
    DrawPanelBox(rect, active ? kActiveTabFill : kIdleTabFill, active ? kAccent : kIdleTabEdge);
    if (active) FillRect({rect.left, rect.top, rect.left + 3, rect.bottom}, kActiveTabMark);
    DrawText(rect.left + 8, rect.top + 4, title, active ? kActiveTabText : kIdleTabText, 14, kSemiBold);
}

SectionMarks DrawSectionHeader(int32_t left, int32_t top, int32_t right, const std::wstring& title,
                               bool expanded, bool enabled) {
    const int32_t bottom = top + kSectionHeight;
    FillRect({left, top, right, bottom}, kSectionFill);
    FillRect({left, top, left + 3, bottom}, enabled ? kEnabledMark : kDisabledMark);
    FillRect({left, bottom - 1, right, bottom}, kSectionBottomLine);
    DrawText(left + 8, top + 5, expanded ? L"v" : L">", kGlyphText, 13, kSemiBold);
    DrawText(left + 24, top + 5, enabled ? L"[x]" : L"[ ]", enabled ? kEnabledText : kDisabledText, 13,
             kSemiBold);
    DrawText(left + 54, top + 4, title, kSectionTitle, 15, kSemiBold);
    DrawText(right - 48, top + 5, L"?", kGlyphText, 13, kSemiBold);
    DrawText(right - 24, top + 5, L":", kGlyphText, 13, kSemiBold);
    return {.arrow{left + 4, top + 2, left + 22, bottom - 2},
            .remove{left + 24, top + 2, left + 48, bottom - 2}};
}

static void DrawLabel(int32_t x, int32_t y, const std::wstring& label) {
    DrawText(x + 10, y, label, kLabelText, 14, kNormal);
}

static void DrawValueBox(const Rect& rect) { DrawPanelBox(rect, kValueBoxFill, kInputEdge); }

constexpr TextFont kValueFont{13, kNormal};
constexpr int32_t kValueRoom = 286 - 128 - 2;  // pixels from a row's value to the bevel of its box

std::wstring ValueRowPath(const std::wstring& path) { return ShortenMiddle(path, kValueRoom, kValueFont); }

Rect DrawValueRow(int32_t x, int32_t y, const std::wstring& label, const std::wstring& value) {
    constexpr int32_t kReachBelow = 2;  // a click this far below the box still counts
    const Rect box{x + 120, y - 2, x + 286, y + 20};
    DrawLabel(x, y, label);
    DrawValueBox(box);
    DrawText(x + 128, y + 1, ShortenEnd(value, kValueRoom, kValueFont), kValueText, kValueFont.height,
             kValueFont.weight);
    return {box.left, box.top, box.right, box.bottom + kReachBelow};
}

std::array<Rect, 3> DrawVectorRow(int32_t x, int32_t y, const std::wstring& label, Vec3 value) {
    constexpr const wchar_t* kAxes[] = {L"X", L"Y", L"Z"};
    const float components[] = {value.x, value.y, value.z};
    std::array<Rect, 3> boxes{};
    DrawLabel(x, y, label);
    for (int32_t i = 0; i < 3; ++i) {
        const int32_t offset = x + 61 * i;
        Rect& box = boxes[static_cast<size_t>(i)];
        box = {offset + 116, y - 2, offset + 160, y + 20};
        DrawText(offset + 102, y, kAxes[i], kAxisText, 13, kSemiBold);
        DrawValueBox(box);
        // Never shortened: a number without its end is another number.
        DrawText(offset + 120, y + 1, Fixed(components[i], 2), kValueText, kValueFont.height,
                 kValueFont.weight);
    }
    return boxes;
}

Rect DrawSliderRow(int32_t x, int32_t y, const std::wstring& label, float value) {
    const float shown = Limit(value, 0.0f, 1.0f);
    const int32_t left = x + kSliderLeft, right = left + kSliderWidth;
    const int32_t end = left + static_cast<int32_t>(kSliderWidth * shown);
    DrawLabel(x, y, label);
    FillRect({left, y + 7, right, y + 13}, kSliderTrack);
    FillRect({left, y + 7, end, y + 13}, kAccent);
    FillRect({end - 3, y + 3, end + 3, y + 17}, kSliderKnob);
    DrawText(x + 252, y, Fixed(shown, 2), kValueText, 13, kNormal);
    return {left, y + 1, right, y + 20};
}

float BarFraction(int32_t x, const Rect& bar) {
    const float width = Width(bar) < 2 ? 1.0f : static_cast<float>(Width(bar));
    return Limit((static_cast<float>(x) - static_cast<float>(bar.left)) / width, 0.0f, 1.0f);
}
