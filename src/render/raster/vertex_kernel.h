// Vertices: from object space to the screen, one vertex in each lane.
//
// In go the mesh's vertices and two matrices. Out come the corners on the screen, sixteen bytes each, so
// that a face later takes each of its corners with one load. A vertex is transformed once, however many
// faces share it. It goes to the world first and through view and projection second: the product of both
// matrices would be less work, but it rounds differently. The operations are those of ProjectToViewport
// without its branches: a vertex that is not visible gets a corner too, and a flag that says so.
#pragma once

#include "render/raster/kernels.h"
#include "render/raster/lanes.h"

namespace {

// The bounds of the corners so far.
struct ExtentOfLanes {
    Floats left, top, right, bottom;
    Mask plain;  // set while every vertex of the lane is
};

ZEL_INLINE void Widen(ExtentOfLanes& extent, Floats x, Floats y, Mask plain) {
    extent.left = Least(extent.left, x);
    extent.top = Least(extent.top, y);
    extent.right = Most(extent.right, x);
    extent.bottom = Most(extent.bottom, y);
    extent.plain = extent.plain & plain;
}

// Transforms one vector of vertices and writes it to the lists from index `i` on.
ZEL_INLINE void TransformVector(const MeshVertex* vertices, const VertexTransform& transform, size_t i,
                                const VertexLists& out, ExtentOfLanes& extent) {
    Points object;
    Floats color;
    LoadRecords([vertices](int lane) { return &vertices[lane].position.x; }, object.x, object.y, object.z,
                color);
    const Points world = Transformed(transform.world, object);
    const Points clip = Transformed(transform.viewProjection, world);
    const Floats clipW = RowTimes(transform.viewProjection, 3, world);
    const Floats inverseW = Splat(1.0f) / clipW, half = Splat(0.5f);
    const Floats depth = clip.z * inverseW;
    const Rect& viewport = transform.viewport;
    const Floats width = Number(viewport.right - viewport.left), left = Number(viewport.left),
                 height = Number(viewport.bottom - viewport.top), top = Number(viewport.top);
    const Floats x = (clip.x * inverseW * half + half) * width + left;
    const Floats y = (half - clip.y * inverseW * half) * height + top;

    const Mask isInRange = (depth >= Splat(-kDepthSlack)) & (depth <= Splat(1 + kDepthSlack));
    const Mask visible = (clipW > Splat(kNearestW)) & isInRange & AreNumbers(x, y);
    const Mask beyond = clip.z >= Splat(0.0f);
    StoreFlags(out.visible + i, visible);
    StoreFlags(out.beyondNearPlane + i, beyond);

    const Floats limitedX = Limited(x, -kMaxScreen, kMaxScreen),
                 limitedY = Limited(y, -kMaxScreen, kMaxScreen);
    StoreRecords(&out.corners[i].x, limitedX, limitedY, Limited(depth, 0, 1), inverseW);
    Widen(extent, limitedX, limitedY, visible & beyond);
}

// The last vector overlaps the one before it. A mesh smaller than one vector is filled up with copies of
// its last vertex.
void TransformAll(const MeshVertex* vertices, size_t count, const VertexTransform& transform,
                  const VertexLists& out, VertexExtent& extent) {
    const Floats most = Splat(kMaxScreen), least = Splat(-kMaxScreen);
    ExtentOfLanes found{most, most, least, least, AllLanes()};
    if (count < static_cast<size_t>(kLanes)) {
        MeshVertex filledUp[kLanes];
        for (size_t i = 0; i < static_cast<size_t>(kLanes); ++i)
            filledUp[i] = vertices[i < count ? i : count - 1];
        TransformVector(filledUp, transform, 0, out, found);
    } else {
        for (size_t i = 0; i < count; i += kLanes) {
            const size_t first = i + kLanes <= count ? i : count - kLanes;
            TransformVector(vertices + first, transform, first, out, found);
        }
    }
    extent = {LeastLane(found.left), LeastLane(found.top), MostLane(found.right), MostLane(found.bottom),
              AreAll(found.plain)};
    LeaveVectors();
}

}  // namespace
