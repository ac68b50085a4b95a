#include "viewport/viewport_overlay.h"

#include "base/limit.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "render/raster/camera.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

constexpr int32_t kGridReach = 9;  // lines at -9 .. 9 along both axes
constexpr float kGridNear = -9, kGridFar = 11, kGridRight = 9;
constexpr float kLinesAlongZHeight = -1.02f, kLinesAlongXHeight = -1.01f;
constexpr Pixel kGridAxis{0x7A875D};
constexpr Pixel kGridLine{0x5B5E46};

constexpr int32_t kIconSize = 24, kSelectedIconSize = 28;
constexpr int32_t kIconFrame = 3;
constexpr Pixel kSelectedIconFrame{0x78E2FF};

constexpr TextColor kTextObject{0xFCF8F5};
constexpr Pixel kSelectedTextFill{0x312924};
constexpr Pixel kSelectedTextEdge{0x56D6FF};
constexpr int32_t kTextWeight = 600;

static void DrawWorldLine(const Matrix4& viewProjection, Vec3 from, Vec3 to, Pixel color) {
    Point a, b;
    if (!ProjectToPixel(viewProjection, from, frameBuffer.viewport, a)) return;
    if (!ProjectToPixel(viewProjection, to, frameBuffer.viewport, b)) return;
    DrawLine(a, b, color);
}

// 19 lines along each axis. They have no depth, so the order decides which colour a crossing has, and every
// object is drawn over them later, also one that stands below the grid.
void DrawGrid(const Matrix4& viewProjection) {
    for (int32_t i = -kGridReach; i <= kGridReach; ++i) {
        const auto at = static_cast<float>(i);
        const Pixel color = i == 0 ? kGridAxis : kGridLine;
        DrawWorldLine(viewProjection, {at, kLinesAlongZHeight, kGridNear}, {at, kLinesAlongZHeight, kGridFar},
                      color);
        DrawWorldLine(viewProjection, {-kGridRight, kLinesAlongXHeight, at},
                      {kGridRight, kLinesAlongXHeight, at}, color);
    }
}

namespace {
struct MarkerIcon {
    bool GameObject::*role;
    CanvasImage Icons::*icon;
};
}  // namespace

// In the order of drawing.
constexpr MarkerIcon kMarkerIcons[] = {
    {&GameObject::isEntity, &Icons::entity},
    {&GameObject::isCamera, &Icons::camera},
    {&GameObject::isLight, &Icons::light},
};

static Rect SquareAround(Point centre, int32_t size) {
    const int32_t left = centre.x - size / 2, top = centre.y - size / 2;
    return {left, top, left + size, top + size};
}

// An icon has the same size at any distance. Only its centre is projected, so it vanishes with its object's
// place and not before.
void DrawObjectIcon(CanvasImage icon, Vec3 position, const Matrix4& viewProjection, bool selected) {
    Point centre;
    if (icon < 0 || !ProjectToPixel(viewProjection, position, frameBuffer.viewport, centre)) return;
    const Rect square = SquareAround(centre, selected ? kSelectedIconSize : kIconSize);
    if (selected) {
        FillRect({square.left - kIconFrame, square.top - kIconFrame, square.right + kIconFrame,
                  square.bottom + kIconFrame},
                 kSelectedIconFrame);
    }
    DrawImage(icon, square);
}

void DrawMarkerIcons(const GameObject& object, Vec3 position, const Matrix4& viewProjection, bool selected) {
    for (const auto& [role, icon] : kMarkerIcons) {
        if (object.*role) DrawObjectIcon(icons.*icon, position, viewProjection, selected);
    }
}

bool HasMarkerIcon(const GameObject& object) {
    return std::ranges::any_of(
        kMarkerIcons, [&object](const MarkerIcon& m) { return object.*m.role && icons.*m.icon >= 0; });
}

int32_t TextObjectHeight(const GameObject& object) {
    const Vec3 s = object.scale;
    const float meanScale = (std::abs(s.x) + std::abs(s.y) + std::abs(s.z)) / 3;
    return static_cast<int32_t>(Limit(std::max(0.4f, meanScale) * object.textSize, 8.0f, 128.0f));
}

static std::wstring_view ShownText(const GameObject& object) {
    return object.text.empty() ? std::wstring_view(L"Text") : object.text;
}

// Each letter taken as half as wide as high. The letters are limited, so that their product with the height
// keeps within 32 bits; so many are wider than any screen even at the smallest height.
static int32_t LettersWidth(const GameObject& object) {
    constexpr size_t kMostLetters = 10'000;
    return static_cast<int32_t>(std::min(ShownText(object).size(), kMostLetters)) * TextObjectHeight(object) /
           2;
}

void DrawTextObject(const GameObject& object, Vec3 position, const Matrix4& viewProjection, bool selected) {
    Point anchor;
    if (!ProjectToPixel(viewProjection, position, frameBuffer.viewport, anchor)) return;
    const std::wstring text(ShownText(object));
    const int32_t height = TextObjectHeight(object);
    if (selected) {
        const int32_t width = std::clamp(LettersWidth(object) + 18, 72, 260);
        DrawPanelBox({anchor.x - 7, anchor.y - 5, anchor.x + width, anchor.y + 9 + height}, kSelectedTextFill,
                     kSelectedTextEdge);
    }
    // A file may hold a fourth byte, which the system would take for another kind of colour.
    const TextColor color = object.hasColor ? TextColor{object.color & 0xFFFFFF} : kTextObject;
    DrawText(anchor.x, anchor.y, text, color, height, kTextWeight);
}

Rect IconRect(Point anchor) { return SquareAround(anchor, kIconSize); }

Rect TextObjectRect(const GameObject& object, Point anchor) {
    return {anchor.x, anchor.y, anchor.x + LettersWidth(object), anchor.y + TextObjectHeight(object)};
}
