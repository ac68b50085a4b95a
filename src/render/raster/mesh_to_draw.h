// What the stages of drawing a mesh hand to one another, in the order of the stages.
#pragma once

#include "base/color.h"
#include "base/matrix4.h"
#include "base/rect.h"
#include "render/raster/camera.h"
#include "state/mesh.h"
#include "state/texture_image.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

// What a mesh is drawn with. The first three stay the same for a whole frame.
struct MeshDraw {
    Vec3 eye{};                             // world space
    Vec3 light{};                           // unit vector toward the light, or zero
    Matrix4 viewProjection{};               // world to clip space
    Matrix4 world{};                        // object to world space
    bool selected = false;                  // with an outline over everything
    uint32_t tint = 0;                      // 0x00BBGGRR; 0 for none
    float roughness = 0.72f;                // 0 .. 1
    float gloss = 0.18f;                    // 0 .. 1
    const TextureImage* texture = nullptr;  // null for the vertex colours
    bool repeat = false;                    // the texture is tiled, one tile per two world units
};

struct MeshInstance {
    const Mesh* mesh = nullptr;
    MeshDraw draw{};
};

// ---- The vertices.

// How the vertices of a mesh are transformed: to the world, then to the screen.
struct VertexTransform {
    Matrix4 world{};
    Matrix4 viewProjection{};
    Rect viewport{};
};

// What a kernel writes, by vertex: see MeshVertices.
struct VertexLists {
    ScreenCorner* corners = nullptr;
    uint8_t* visible = nullptr;
    uint8_t* beyondNearPlane = nullptr;
};

// The bounds of the corners of a mesh.
struct VertexExtent {
    float left = 0, top = 0, right = 0, bottom = 0;  // pixels; only when all are plain
    bool arePlain = false;                           // all of them: see MeshVertices::IsPlain
};

// The vertices of one mesh, each transformed once. By vertex, and a margin at the end of each list: see
// kListMargin.
struct MeshVertices {
    std::vector<ScreenCorner> corners{};     // valid only if visible
    std::vector<uint8_t> visible{};          // 1 if the projection accepted the vertex
    std::vector<uint8_t> beyondNearPlane{};  // 1 if clip z >= 0
    VertexExtent extent{};
    std::vector<ScreenCorner> plainCorners{};  // not a number if a vertex is not plain; see PlainCorners

    bool IsPlain(size_t i) const { return visible[i] && beyondNearPlane[i]; }

    // By vertex: the corner if the vertex is plain, else not a number.
    const ScreenCorner* PlainCorners() const {
        return extent.arePlain ? corners.data() : plainCorners.data();
    }
};

// ---- Which faces are visible.

// The eye in the object space of a mesh, and how certain that is.
struct EyeInObject {
    Vec3 position{};   // object space
    float inside = 1;  // -1 if the matrix turns the mesh inside out
    // The height of the eye over the plane of a face, times the length of the face's normal: below minus
    // this, the eye is certainly behind the face. One bound serves all faces, so in a mesh with a long
    // edge small faces are hardly ever left out.
    float certainty = 0;
    // A face is hidden if the eye stands higher over its plane than this: see HiddenHeight.
    float hiddenFrom = std::numeric_limits<float>::infinity();
    bool isUsable = false;  // false: nothing is known of any face
};

// A face that may be visible.
struct ScannedFace {
    uint32_t triangle = 0;  // index into the mesh's triangles
    Rect box{};         // the face covers nothing of the viewport outside it; not empty, inside the buffer
    float nearest = 0;  // no pixel of it lies before this depth
    // Edge functions at its pixels are zero or at least 2^-69 in size, see Divisor, and the weights of a
    // pixel add up to more than a half.
    bool isOrdinary = false;
};

// ---- What colours a face.

// Texture coordinates of a corner, v upwards.
struct TexturePoint {
    float u = 0, v = 0;
};

// The world scale along x, y and z.
struct AxisScales {
    float x = 1, y = 1, z = 1;
};

// A texture as the fill samples it.
struct TextureSource {
    const Pixel* texels = nullptr;  // null: white
    int32_t width = 0, height = 0;  // pixels
    bool repeat = false;
    uint32_t tint = 0;    // 0x00BBGGRR, 0 for none
    bool isVast = false;  // a side is longer than 2^24: the float of its last column or row may lie above it
};

// Cosines of the angles between a face's normal and three directions.
struct FaceLight {
    float eye = 0;  // not above 0: the face turns its back to the eye
    float light = 0;
    float halfway = 0;  // between light and eye
};

struct FaceInk {
    Pixel color{};             // of a flat face
    TexturePoint points[3]{};  // of a textured one, by corner
    float brightness = 1;      // of a textured one; limited when it is applied
};

// ---- The fill.

struct MeshToDraw;

// Finds the ink of a face, given its index in the list. False: the face is not drawn.
using FindFaceInk = bool (*)(const MeshToDraw& mesh, size_t face, FaceInk& ink);

// Faces of one mesh, in the order of drawing. The fill asks for the ink of a face when the first of its
// pixels has passed the depth test: most faces have no visible pixel.
struct MeshToDraw {
    const MeshDraw* draw = nullptr;
    const MeshVertex* vertices = nullptr;     // of the mesh
    const MeshTriangle* triangles = nullptr;  // of the mesh
    const ScreenCorner* corners = nullptr;    // by vertex
    AxisScales scales{};
    bool isTextured = false;
    TextureSource texture{};  // of a textured mesh
    const ScannedFace* faces = nullptr;
    size_t faceCount = 0;
    const FaceLight* lights = nullptr;  // by face; null: each is found when it is needed
    FindFaceInk findInk = nullptr;
    const FaceInk* knownInk = nullptr;  // for a `findInk` that only hands it on
};

// ---- Memory.

// Some faces of a mesh with their own copies of vertices: one copy for each corner.
struct MeshPart {
    std::vector<MeshVertex> vertices{};
    std::vector<MeshTriangle> triangles{};
};

// Memory that drawing uses again for the next mesh and the next frame. Its content means nothing between
// two calls.
struct MeshScratch {
    MeshVertices vertices{};
    std::vector<uint32_t> fronts{};  // faces that may turn to the eye
    std::vector<ScannedFace> visible{};
    std::vector<FaceLight> lights{};
    MeshPart few{};
    std::vector<uint64_t> order{};  // of a batch: see DrawMeshes
};
