#include "render/face_scan.h"

#include "render/face_scan_lanes.h"
#include "render/front_faces.h"

#include <algorithm>
#include <cmath>

static float Least(float a, float b, float c) { return std::min(std::min(a, b), c); }
static float Most(float a, float b, float c) { return std::max(std::max(a, b), c); }

// The first and last pixel of a line whose centre may lie from `low` to `high`: exactly, or with the margin
// of a whole pixel where rounding may reach farther.
static float FirstPixel(float low, bool isCertain) {
    return isCertain ? std::ceil(low - (0.5f + kCentreSlack)) : std::floor(low);
}
static float LastPixel(float high, bool isCertain) {
    return isCertain ? std::floor(high - (0.5f - kCentreSlack)) : std::ceil(high);
}

namespace {

// What a face may cover: from the first to the last pixel, both inclusive and inside the viewport. Empty
// where the last is less than the first.
struct FaceSpan {
    float cross, area;  // twice the area, square pixels: with the sign of the winding, and its size
    float size;         // from one end to the farthest centre that is looked at
    float left, top, right, bottom;  // pixels, whole numbers
};

}  // namespace

static FaceSpan SpanOf(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                       const Rect& viewport) {
    FaceSpan span;
    span.cross = (c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x);
    span.area = std::abs(span.cross);
    const float minX = Least(a.x, b.x, c.x), maxX = Most(a.x, b.x, c.x);
    const float minY = Least(a.y, b.y, c.y), maxY = Most(a.y, b.y, c.y);
    span.size = std::max(maxX - minX, maxY - minY) + kBoxMargin;
    const bool isCertain = span.area >= kCertainArea * span.size * span.size * span.size;
    span.left = std::max(FirstPixel(minX, isCertain), static_cast<float>(viewport.left));
    span.top = std::max(FirstPixel(minY, isCertain), static_cast<float>(viewport.top));
    span.right = std::min(LastPixel(maxX, isCertain), static_cast<float>(viewport.right - 1));
    span.bottom = std::min(LastPixel(maxY, isCertain), static_cast<float>(viewport.bottom - 1));
    return span;
}

static bool IsEmpty(const FaceSpan& span) {
    return span.area < kSmallestArea || span.left > span.right || span.top > span.bottom;
}

// No pixel of the face lies before this.
static float NearestDepth(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                          const FaceSpan& span) {
    const float least = Least(a.depth, b.depth, c.depth);
    const float rounding = kDepthRounding * span.size * span.size / span.area + kSumRounding;
    return least - (least * rounding + kVanishing);
}

static bool IsOutside(const ScreenCorner& start, const ScreenCorner& end, float sign, float x, float y) {
    return sign * ((x - start.x) * (end.y - start.y) - (y - start.y) * (end.x - start.x)) < kCertainlyOutside;
}

// True for a face of a few pixels that covers none of their centres: its edges tell it as filling does.
static bool MissesCentres(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                          const FaceSpan& span) {
    if (span.right - span.left > kFewPixels || span.bottom - span.top > kFewPixels) return false;
    const float sign = span.cross < 0 ? -1.0f : 1.0f;
    bool misses = true;
    for (float x : {span.left + 0.5f, span.right + 0.5f}) {
        for (float y : {span.top + 0.5f, span.bottom + 0.5f}) {
            misses = misses && (IsOutside(b, c, sign, x, y) || IsOutside(c, a, sign, x, y) ||
                                IsOutside(a, b, sign, x, y));
        }
    }
    return misses;
}

// False when the triangle shows no pixel of the viewport; otherwise gives those that it may cover.
static bool MayShow(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c, const FaceView& view,
                    ScannedFace& face) {
    const FaceSpan span = SpanOf(a, b, c, view.viewport);
    face.nearest = NearestDepth(a, b, c, span);
    if (IsEmpty(span) || face.nearest > view.farthest || MissesCentres(a, b, c, span)) return false;
    face.box = {static_cast<int32_t>(span.left), static_cast<int32_t>(span.top),
                static_cast<int32_t>(span.right) + 1, static_cast<int32_t>(span.bottom) + 1};
    return true;
}

// The faces of a list, which are those that may turn to the eye.
static void ScanScalar(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                       const std::vector<uint32_t>& faces, std::vector<ScannedFace>& out) {
    out.clear();
    for (uint32_t i : faces) {
        ScannedFace face{i};
        const MeshTriangle& t = mesh.triangles[i];
        const auto a = static_cast<size_t>(t[0]), b = static_cast<size_t>(t[1]),
                   c = static_cast<size_t>(t[2]);
        const bool isPlain = vertices.IsPlain(a) && vertices.IsPlain(b) && vertices.IsPlain(c);
        if (!isPlain || MayShow(vertices.corners[a], vertices.corners[b], vertices.corners[c], view, face))
            out.push_back(face);
    }
}

void ScanFaces(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view, SimdLevel level,
               std::vector<ScannedFace>& out) {
    static std::vector<uint32_t> faces;
    FindFrontFaces(mesh, FindEye(mesh, view.world, view.eye), level, faces);
    if (level == SimdLevel::Scalar || faces.empty()) {
        ScanScalar(mesh, vertices, view, faces, out);
        return;
    }
    const size_t count = faces.size();
    faces.resize((count + 7) / 8 * 8, faces.back());
    if (level == SimdLevel::Avx2) {
        ScanAvx2({mesh, vertices, view, faces, count}, out);
    } else {
        ScanSse2({mesh, vertices, view, faces, count}, out);
    }
}
