#include "editor/color_wheel.h"

#include "base/limit.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <span>
#include <vector>

constexpr float kPi = 3.14159265358979f;
constexpr int32_t kMarkReach = 3;  // the mark is 7 x 7

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

namespace {

// Wheels come in three sizes and are drawn in every frame, and a large one has nine thousand pixels with an
// arc tangent each. So each size is computed when it is first drawn, and copied from then on. What a wheel
// shows depends on nothing but its radius: nothing here ever becomes out of date.
struct WheelCache {
    std::map<int32_t, PixelRows> byRadius{};
};

}  // namespace

static WheelCache wheels;

// The pixels within the radius.
static PixelRows RowsOfWheel(int32_t radius) {
    PixelRows rows;
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

static const PixelRows& CachedWheel(int32_t radius) {
    const auto found = wheels.byRadius.find(radius);
    if (found != wheels.byRadius.end()) return found->second;
    return wheels.byRadius.emplace(radius, RowsOfWheel(radius)).first->second;
}

Rect DrawColorWheel(Point centre, int32_t radius, uint32_t color) {
    constexpr Pixel kMark{0xFFFFFF}, kMarkRim{0x14100D};
    const Rect square{centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius};
    DrawPixelRows({centre.x, centre.y - radius}, CachedWheel(radius));
    const Point place = PlaceOnWheel(color, radius);
    const Point mark{centre.x + place.x, centre.y + place.y};
    DrawSquareOutline(mark, kMarkReach + 1, kMarkRim);
    DrawSquareOutline(mark, kMarkReach, kMark);
    DrawSquareOutline(mark, kMarkReach - 1, kMarkRim);
    return square;
}
