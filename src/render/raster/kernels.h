// The loops of the rasterizer that run in vectors, one table of functions for each width. All tables give the
// same bits; that of one lane is the definition.
#pragma once

#include "render/raster/mesh_to_draw.h"
#include "state/mesh.h"

#include <cstddef>
#include <cstdint>
#include <vector>

constexpr size_t kMostLanes = 16;

// A triangle is not drawn if twice its area is below this, square pixels.
constexpr float kSmallestArea = 0.0001f;

// Interpolated 1 / w below which a textured pixel is skipped.
constexpr float kSmallestQ = 1e-6f;

// Pixels from a corner of a triangle to the farthest centre that is looked at.
constexpr float kBoxMargin = 1.5f;

// How far rounding moves the depth of a triangle's pixels. The sum of a pixel's three weights may differ
// from 1 by 3 * 8 * 2^-24 * size^2 / area because of the edges, and by a third of that because of the
// area, in a box of `size` pixels. A pixel may be nearer than the nearest corner by this share of its
// depth. The first number is a little more than that; the second one covers the products and sums of
// depths.
constexpr float kDepthRounding = 40 * 0x1p-24f, kSumRounding = 16 * 0x1p-24f;

// Numbers below this lose more than their share to rounding, up to all of it. The bound on a depth is
// lowered by this much, which changes no larger one.
constexpr float kVanishing = 0x1p-126f;

// Lists that kernels write to have room for this many more elements, because whole vectors are stored.
constexpr size_t kListMargin = kMostLanes;

// Makes room in a list for `count` elements and the margin. The list never shrinks: growing it again would
// clear what was cut off.
template <typename Element>
void Reserve(std::vector<Element>& list, size_t count) {
    if (list.size() < count + kListMargin) list.resize(count + kListMargin);
}

// What is drawn to. Whole vectors are stored: lanes beyond a triangle are written back unchanged.
struct FillTarget {
    Pixel* pixels = nullptr;  // of the buffer's first pixel
    float* depth = nullptr;
    int32_t width = 0, height = 0;  // of the buffer
    // By pixel, the number of the object that it shows; kept while objects are drawn in another order than
    // the scene's. At equal depths the earlier object of the scene wins. Null: the one drawn first wins.
    int32_t* owners = nullptr;
    int32_t owner = 0;  // the number of the object at hand
};

// No width uses larger blocks, so a buffer of at least this size can be filled at every level.
constexpr int32_t kWidestBlock = 16, kHighestBlock = 4;

// The planes of a mesh's faces, see MeshMeasures.
struct FacePlanes {
    const float* normalX = nullptr;
    const float* normalY = nullptr;
    const float* normalZ = nullptr;
    const float* offset = nullptr;
    size_t count = 0;
};

// The faces to look at; see ScanFaces.
struct FacesToScan {
    const MeshTriangle* triangles = nullptr;  // of the mesh
    const ScreenCorner* corners = nullptr;    // by vertex; not a number for one that has no place
    // Numbers of faces, followed by as many valid ones as the margin of a list.
    const uint32_t* faces = nullptr;
    size_t count = 0;
    Rect viewport{};
    float farthest = 1;  // no depth is greater in the pixels that the mesh may cover
};

struct RasterKernels {
    int32_t lanes = 0;

    // Transforms `count` vertices, at least one. The lists of `out` have a margin.
    void (*transformVertices)(const MeshVertex* vertices, size_t count, const VertexTransform& transform,
                              const VertexLists& out, VertexExtent& extent);

    // Writes the numbers of the faces that may turn to the eye, and returns their number.
    size_t (*findFrontFaces)(const FacePlanes& planes, const EyeInObject& eye, uint32_t* out);

    // Writes the faces that may be visible, and returns their number.
    size_t (*scanFaces)(const FacesToScan& scan, ScannedFace* out);

    // Writes how each face of the mesh stands to eye and light. The list has a margin.
    void (*lightFaces)(const MeshToDraw& mesh, FaceLight* out);

    // Fills the pixels whose centres lie inside a face, edges included, if the face is nearer than the
    // depth there. Only in one lane may a corner lie before depth 0.
    void (*fillFlatFaces)(const MeshToDraw& mesh, const FillTarget& to);
    void (*fillTexturedFaces)(const MeshToDraw& mesh, const FillTarget& to);

    // True when a triangle with an area covers the centre of the pixel, edges included, and is strictly
    // nearer than `depth`, which then becomes the triangle's depth there.
    bool (*coversPixel)(const ScreenCorner (&corners)[3], int32_t x, int32_t y, float& depth);

    // The columns inside the box that a triangle may cover, in as many rows as there are lanes: every
    // covered pixel, and little more. The right column is exclusive; a row that cannot be covered is
    // empty.
    void (*coveredColumns)(const ScreenCorner (&corners)[3], const Rect& box, int32_t firstRow, int32_t* left,
                           int32_t* right);

    // Fills a block of 32-bit numbers whose rows begin `stride` numbers apart.
    void (*clearBlock)(void* first, int64_t stride, int32_t width, int32_t height, uint32_t value);

    // The greatest depth of such a block, at least 0.
    float (*farthestOf)(const float* first, int64_t stride, int32_t width, int32_t height);
};

const RasterKernels& KernelsOneLane();
const RasterKernels& KernelsSse2();
const RasterKernels& KernelsAvx2();
const RasterKernels& KernelsAvx512();
