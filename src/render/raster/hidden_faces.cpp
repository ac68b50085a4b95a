#include "render/raster/hidden_faces.h"

#include "render/raster/depth_rounding.h"

#include <cmath>
#include <limits>

constexpr float kNever = std::numeric_limits<float>::infinity();
constexpr float kUnit = 0x1p-24f;            // of one operation's rounding
constexpr float kRoundedUp = 1.001f;         // more than what rounding takes off the few operations here
constexpr float kClipRounding = 32 * kUnit;  // of a clip coordinate's size

static Vec3 Axis(const Matrix4& a, size_t row) { return {a.m[row][0], a.m[row][1], a.m[row][2]}; }

// How far from zero a clip coordinate of the eye may be. Exactly it is zero: the eye is where all rays meet.
static float OffZero(const Matrix4& toClip, size_t row, Vec3 eye, float size) {
    const float found = Dot(Axis(toClip, row), eye) + toClip.m[row][3];
    const float largest = std::abs(eye.x) + std::abs(eye.y) + std::abs(eye.z);
    return std::abs(found) + kClipRounding * (size + largest * Length(Axis(toClip, row)));
}

// Twice the area on the screen that a face needs, square pixels, so that no pixel of it lies before
// `farthest`: see NearestDepths in faces_kernel.h. Infinite when no area is enough.
static float AreaNeeded(const MeshPlace& place, float farthest) {
    const float spare = 1 - farthest / place.nearest - kSumRounding - 8 * kUnit - kVanishing / place.nearest;
    if (!(spare > kUnit)) return kNever;
    const float extent = place.edge + 2 * place.moved;
    return kRoundedUp * kDepthRounding * (extent + kBoxMargin) * extent / spare;
}

float HiddenHeight(const Mesh& mesh, const MeshPlace& place, const EyeInObject& eye, const Rect& viewport,
                   float farthest) {
    if (!place.isBounded || !eye.isUsable || !(place.nearest > farthest)) return kNever;
    const float needed = AreaNeeded(place, farthest);
    if (needed == kNever) return kNever;

    // What rounding moves of an area, when it moves each corner.
    const float edge = place.edge + 2 * place.moved;
    const float lost = 8 * place.moved * (edge + place.moved) + 8 * kUnit * edge * edge;

    // Exactly, twice the area is |det| * height / (w0 * w1 * w2), by the determinant of the matrix that takes
    // directions to clip x, y and w, in units of half the viewport.
    const Vec3 x = Axis(place.toClip, 0), y = Axis(place.toClip, 1), w = Axis(place.toClip, 3);
    const Vec3 yw = Cross(y, w), wx = Cross(w, x), xy = Cross(x, y);
    const float det = std::abs(Dot(x, yw));
    const float detRounding =
        64 * kUnit * Length(x) * Length(yw) + 32 * kUnit * Length(x) * Length(y) * Length(w);
    const float units = 0.25f * static_cast<float>(Width(viewport)) * static_cast<float>(Height(viewport));
    const float scale = (det - detRounding) * units;
    if (!(scale > 0)) return kNever;
    const float height = (needed + lost) * place.mostW * place.mostW * place.mostW / scale;

    // The heights are those of the eye that faces turn to. How far it is from where rays meet counts against
    // them.
    const float away = (OffZero(place.toClip, 0, eye.position, place.sizes.x) * Length(yw) +
                        OffZero(place.toClip, 1, eye.position, place.sizes.y) * Length(wx) +
                        OffZero(place.toClip, 3, eye.position, place.sizes.w) * Length(xy)) /
                       (det - detRounding);
    const float longest = mesh.measures.longestEdge;
    const float found = kRoundedUp * (height + longest * longest * away + eye.certainty);
    return found >= 0 ? found : kNever;
}
