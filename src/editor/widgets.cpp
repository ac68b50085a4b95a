#include "editor/widgets.h"

#include "base/limit.h"
#include "base/numbers.h"
#include "editor/theme.h"
#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <span>
#include <vector>

constexpr float kPi = 3.14159265358979f;
constexpr int32_t kSectionHeight = 26;
constexpr int32_t kSliderLeft = 88, kSliderWidth = 156;
constexpr int32_t kMarkReach = 3;  // the wheel's mark is 7 x 7

// The edges of a box, in the order that decides its corners.
void DrawBoxEdges(const Rect& rect, Pixel topLeft, Pixel bottomRight) {
    const auto [left, top, right, bottom] = rect;
    FillRect({left, top, right, top + 1}, topLeft);
    FillRect({left, bottom - 1, right, bottom}, bottomRight);
    FillRect({left, top, left + 1, bottom}, topLeft);
    FillRect({right - 1, top, right, bottom}, bottomRight);
}

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

void DrawSectionHeader(int32_t left, int32_t top, int32_t right, const std::wstring& title, bool expanded,
                       bool enabled) {
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
}

static void DrawLabel(int32_t x, int32_t y, const std::wstring& label) {
    DrawText(x + 10, y, label, kLabelText, 14, kNormal);
}

static void DrawValueBox(const Rect& rect) { DrawPanelBox(rect, kValueBoxFill, kInputEdge); }

void DrawValueRow(int32_t x, int32_t y, const std::wstring& label, const std::wstring& value) {
    DrawLabel(x, y, label);
    DrawValueBox({x + 120, y - 2, x + 286, y + 20});
    DrawText(x + 128, y + 1, value, kValueText, 13, kNormal);
}

void DrawVectorRow(int32_t x, int32_t y, const std::wstring& label, Vec3 value, int32_t firstAction,
                   HitZoneList& zones) {
    constexpr const wchar_t* kAxes[] = {L"X", L"Y", L"Z"};
    const float components[] = {value.x, value.y, value.z};
    DrawLabel(x, y, label);
    for (int32_t i = 0; i < 3; ++i) {
        const int32_t offset = x + 61 * i;
        const Rect box{offset + 116, y - 2, offset + 160, y + 20};
        DrawText(offset + 102, y, kAxes[i], kAxisText, 13, kSemiBold);
        DrawValueBox(box);
        DrawText(offset + 120, y + 1, Fixed(components[i], 2), kValueText, 13, kNormal);
        if (firstAction >= 0) zones.push_back({box, firstAction + i});
    }
}

void DrawSliderRow(int32_t x, int32_t y, const std::wstring& label, float value) {
    const float shown = Limit(value, 0.0f, 1.0f);
    const int32_t left = x + kSliderLeft, right = left + kSliderWidth;
    const int32_t end = left + static_cast<int32_t>(kSliderWidth * shown);
    DrawLabel(x, y, label);
    FillRect({left, y + 7, right, y + 13}, kSliderTrack);
    FillRect({left, y + 7, end, y + 13}, kAccent);
    FillRect({end - 3, y + 3, end + 3, y + 17}, kSliderKnob);
    DrawText(x + 252, y, Fixed(shown, 2), kValueText, 13, kNormal);
}

uint32_t HsvToColor(float hue, float saturation, float value) {
    const float turns = (hue - std::floor(hue)) * 6;
    const float sector = std::floor(turns);
    const float f = turns - sector;
    const float p = (1 - saturation) * value;
    const float q = (1 - f * saturation) * value;
    const float t = (1 - (1 - f) * saturation) * value;
    const float channels[6][3] = {{value, t, p}, {q, value, p}, {p, value, t},
                                  {p, q, value}, {t, p, value}, {value, p, q}};
    const auto& rgb = channels[static_cast<int32_t>(Limit(sector, 0.0f, 6.0f)) % 6];
    const auto byte = [](float channel) { return static_cast<uint32_t>(Limit(channel * 255, 0.0f, 255.0f)); };
    return byte(rgb[0]) | byte(rgb[1]) << 8 | byte(rgb[2]) << 16;
}

// Hue around a centre in turns. The left side is 0.
static float HueOf(float dx, float dy) { return (std::atan2(dy, dx) + kPi) / (2 * kPi); }

uint32_t ColorOnWheel(Point point, const Rect& square) {
    const float dx = static_cast<float>(point.x) - static_cast<float>(square.left + square.right) / 2;
    const float dy = static_cast<float>(point.y) - static_cast<float>(square.top + square.bottom) / 2;
    const auto radius =
        static_cast<float>(std::max(Width(square) / 2, 1));  // whole pixels, as the wheel is drawn
    return HsvToColor(HueOf(dx, dy), Limit(std::sqrt(dx * dx + dy * dy) / radius, 0.0f, 1.0f), 1);
}

float BarFraction(int32_t x, const Rect& bar) {
    const float width = Width(bar) < 2 ? 1.0f : static_cast<float>(Width(bar));
    return Limit((static_cast<float>(x) - static_cast<float>(bar.left)) / width, 0.0f, 1.0f);
}

// Where on the wheel a colour lies, as an offset from the centre: the inverse of HsvToColor, value aside.
static Point PlaceOnWheel(uint32_t color, int32_t radius) {
    const auto red = static_cast<float>(color & 0xFF), green = static_cast<float>(color >> 8 & 0xFF),
               blue = static_cast<float>(color >> 16 & 0xFF);
    const float most = std::max({red, green, blue}), least = std::min({red, green, blue});
    const float chroma = most - least;
    if (chroma <= 0) return {};
    float sector = 4 + (red - green) / chroma;
    if (most == red) {
        sector = (green - blue) / chroma;
    } else if (most == green) {
        sector = 2 + (blue - red) / chroma;
    }
    const float angle = sector / 6 * 2 * kPi - kPi;
    const float distance = chroma / most * static_cast<float>(radius);
    return {static_cast<int32_t>(std::round(std::cos(angle) * distance)),
            static_cast<int32_t>(std::round(std::sin(angle) * distance))};
}

static void DrawSquareOutline(Point centre, int32_t reach, Pixel color) {
    const Rect r{centre.x - reach, centre.y - reach, centre.x + reach + 1, centre.y + reach + 1};
    DrawBoxEdges(r, color, color);
}

// The pixels within a radius, row by row from the top. Every row lies around the centre.
using WheelRows = std::vector<std::vector<Pixel>>;

static WheelRows RowsOfWheel(int32_t radius) {
    WheelRows rows;
    for (int32_t dy = -radius; dy <= radius; ++dy) {
        std::vector<Pixel>& row = rows.emplace_back();
        for (int32_t dx = -radius; dx <= radius; ++dx) {
            const auto x = static_cast<float>(dx), y = static_cast<float>(dy);
            const float distance = std::sqrt(x * x + y * y);
            if (distance > static_cast<float>(radius)) continue;
            row.push_back(Pixel{HsvToColor(HueOf(x, y), distance / static_cast<float>(radius), 1)});
        }
    }
    return rows;
}

// Wheels come in a few sizes and are shown in every frame, so each size is made once.
static const WheelRows& KeptWheel(int32_t radius) {
    static std::map<int32_t, WheelRows> wheels;
    const auto found = wheels.find(radius);
    return found != wheels.end() ? found->second : wheels.emplace(radius, RowsOfWheel(radius)).first->second;
}

// As far as it lies inside the buffer.
static void CopyRow(Point first, std::span<const Pixel> row) {
    if (first.y < 0 || first.y >= frameBuffer.height) return;
    const int32_t begin = std::clamp(first.x, 0, frameBuffer.width);
    const int32_t end = std::clamp(first.x + static_cast<int32_t>(row.size()), 0, frameBuffer.width);
    if (begin >= end) return;
    std::copy_n(row.data() + (begin - first.x), end - begin,
                frameBuffer.pixels + ptrdiff_t{first.y} * frameBuffer.width + begin);
}

void DrawColorWheel(Point centre, int32_t radius, uint32_t color) {
    constexpr Pixel kMark{0xFFFFFF}, kMarkRim{0x14100D};
    if (frameBuffer.pixels == nullptr) return;
    PreparePixelAccess(frameBuffer);
    int32_t y = centre.y - radius;
    for (const std::vector<Pixel>& row : KeptWheel(radius)) {
        CopyRow({centre.x - static_cast<int32_t>(row.size()) / 2, y++}, row);
    }
    const Point place = PlaceOnWheel(color, radius);
    const Point mark{centre.x + place.x, centre.y + place.y};
    DrawSquareOutline(mark, kMarkReach + 1, kMarkRim);
    DrawSquareOutline(mark, kMarkReach, kMark);
    DrawSquareOutline(mark, kMarkReach - 1, kMarkRim);
}
