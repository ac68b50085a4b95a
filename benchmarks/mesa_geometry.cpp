#include "mesa_geometry.h"

#include "mesa_texture.h"

#include "base/limit.h"
#include "render/raster/face_ink.h"
#include "render/raster/placed_mesh.h"

#include <cmath>
#include <map>

namespace {

struct Face {
    std::array<Vec3, 3> corners{};
    std::array<TexturePoint, 3> points{};  // zero without a texture
    Pixel color{};
    Vec3 normal{};
};

// Appends the faces of one object and shares what vertices can be shared.
class FaceWriter {
public:
    explicit FaceWriter(MesaGeometry& target) : geometry(target) {}

    void Write(std::span<const Face> faces) {
        std::vector<uint32_t> first;
        for (const Face& face : faces) first.push_back(FirstVertex(face));
        for (size_t i = 0; i < faces.size(); ++i) {
            geometry.indices.insert(geometry.indices.end(),
                                    {first[i], LaterVertex(faces[i], 1), LaterVertex(faces[i], 2)});
        }
    }

private:
    using Place = std::array<float, 5>;
    using Look = std::array<float, 4>;

    static Place PlaceOf(const Face& face, size_t corner) {
        const Vec3 p = face.corners[corner];
        return {p.x, p.y, p.z, face.points[corner].u, face.points[corner].v};
    }

    uint32_t Append(const Face& face, size_t corner) {
        geometry.vertices.push_back({face.corners[corner], face.color});
        geometry.points.push_back(face.points[corner]);
        geometry.normals.push_back(face.normal);
        return static_cast<uint32_t>(geometry.vertices.size() - 1);
    }

    uint32_t FirstVertex(const Face& face) {
        const Look look{static_cast<float>(face.color), face.normal.x, face.normal.y, face.normal.z};
        const auto [known, isNew] = byLook.try_emplace({PlaceOf(face, 0), look});
        if (isNew) known->second = byPlace[PlaceOf(face, 0)] = Append(face, 0);
        return known->second;
    }

    uint32_t LaterVertex(const Face& face, size_t corner) {
        const auto [known, isNew] = byPlace.try_emplace(PlaceOf(face, corner));
        if (isNew) known->second = Append(face, corner);
        return known->second;
    }

    MesaGeometry& geometry;
    std::map<std::pair<Place, Look>, uint32_t> byLook{};
    std::map<Place, uint32_t> byPlace{};
};

}  // namespace

static Vec3 NormalOf(const std::array<Vec3, 3>& p) { return Normalise(Cross(p[1] - p[0], p[2] - p[0])); }

static std::array<Vec3, 3> ObjectCorners(const BenchObject& object, const MeshTriangle& triangle) {
    std::array<Vec3, 3> corners;
    for (size_t c = 0; c < 3; ++c) {
        corners[c] = object.mesh->vertices[static_cast<size_t>(triangle[c])].position;
    }
    return corners;
}

static std::array<Vec3, 3> WorldCorners(const BenchObject& object, const MeshTriangle& triangle) {
    std::array<Vec3, 3> corners = ObjectCorners(object, triangle);
    for (Vec3& corner : corners) corner = TransformPoint(object.draw.world, corner);
    return corners;
}

static std::array<TexturePoint, 3> PointsOf(const BenchObject& object, const MeshTriangle& triangle) {
    std::array<TexturePoint, 3> points;
    if (object.draw.texture == nullptr) return points;
    const std::array<Vec3, 3> corners = ObjectCorners(object, triangle);
    const Vec3 normal = NormalOf(WorldCorners(object, triangle));
    const AxisScales scales = WorldScales(object.draw.world);
    for (size_t c = 0; c < 3; ++c) {
        points[c] =
            MesaTexturePoint(TextureCoordinates(corners[c], normal, scales, object.draw.repeat), object.draw);
    }
    return points;
}

static Pixel ColorOf(const BenchObject& object, const MeshTriangle& triangle) {
    if (object.draw.texture != nullptr) return Pixel{0xFFFFFF};
    return Tinted(object.mesh->vertices[static_cast<size_t>(triangle[0])].color, object.draw.tint);
}

static Vec3 UpperRow(const Matrix4& a, size_t row) { return {a.m[row][0], a.m[row][1], a.m[row][2]}; }

// ---- Corners that DrawMesh moves. It limits the screen coordinates of corners, and the near plane cuts some
// large faces beyond that limit. The corner that is moved takes the texture of the whole face along. So Mesa
// gets such a face cut at the near plane already, with its corners where DrawMesh puts them. It saves Mesa
// the cutting.

// Back to the world. The rows of x, y and w hold the axes of the camera, which stand at right angles.
static Vec3 WorldPointOf(const Vec4& clip, const MeshDraw& draw) {
    const auto along = [&draw](size_t row, float length) {
        const Vec3 axis = UpperRow(draw.viewProjection, row);
        return axis * (length / Dot(axis, axis));
    };
    return draw.eye + along(0, clip.x) + along(1, clip.y) + along(3, clip.w);
}

// True if DrawMesh moves the corner, which then stands where it is moved to.
static bool MoveAsDrawn(Vec4& clip, const Rect& viewport) {
    ScreenCorner corner;
    if (!ProjectToViewport(clip, viewport, corner)) return false;
    if (std::abs(corner.x) < kMaxScreen && std::abs(corner.y) < kMaxScreen) return false;
    clip.x = (corner.x / static_cast<float>(Width(viewport)) * 2 - 1) * clip.w;
    clip.y = (1 - corner.y / static_cast<float>(Height(viewport)) * 2) * clip.w;
    return true;
}

static ClippedPolygon CutAtNearPlane(const Face& face, const Matrix4& world, const MeshDraw& draw) {
    std::array<ClipVertex, 3> vertices;
    for (size_t c = 0; c < 3; ++c) {
        const Vec3 corner = TransformPoint(world, face.corners[c]);
        vertices[c] = {TransformToClip(draw.viewProjection, corner), face.points[c].u, face.points[c].v};
    }
    return ClipTriangle(vertices);
}

// Adds the face, or the triangles of the fan that DrawMesh makes of it if one of their corners is moved.
// `world` leads from the space of its corners to the world.
static void AddAsDrawn(const Face& face, const Matrix4& world, const MeshDraw& draw, const Rect& viewport,
                       std::vector<Face>& faces) {
    ClippedPolygon polygon = CutAtNearPlane(face, world, draw);
    bool isAnyMoved = false;
    for (ClipVertex& vertex : polygon.vertices) isAnyMoved |= MoveAsDrawn(vertex.position, viewport);
    Matrix4 inverse;
    if (!isAnyMoved || !InvertMatrix(world, inverse)) {
        faces.push_back(face);
        return;
    }
    for (size_t k = 1; k + 1 < static_cast<size_t>(polygon.count); ++k) {
        Face& part = faces.emplace_back(face);
        for (size_t c = 0; c < 3; ++c) {
            const ClipVertex& vertex = polygon.vertices[c == 0 ? 0 : k + c - 1];
            part.corners[c] = TransformPoint(inverse, WorldPointOf(vertex.position, draw));
            part.points[c] = {vertex.u, vertex.v};
        }
    }
}

// ---- Light.

// Of a face with a texture: the light alone, white at kMesaWhite.
static Pixel GreyOf(float brightness) {
    const float light = Limit(brightness, kDarkest, kBrightest) / kMesaWhite;
    return Pixel{static_cast<uint32_t>(std::lround(light * 255)) * 0x010101};
}

static Face LitFace(const BenchObject& object, const MeshTriangle& triangle) {
    const MeshDraw& draw = object.draw;
    Face face{WorldCorners(object, triangle), PointsOf(object, triangle)};
    const Vec3 normal = NormalOf(face.corners), toEye = Normalise(draw.eye - face.corners[0]);
    const float brightness = FaceBrightness(normal, toEye, draw.light, draw.roughness, draw.gloss);
    face.color = draw.texture == nullptr ? Lit(ColorOf(object, triangle), brightness) : GreyOf(brightness);
    return face;
}

MesaGeometry LitMesaGeometry(std::span<const BenchObject> objects, const Rect& viewport) {
    MesaGeometry geometry;
    for (const BenchObject& object : objects) {
        std::vector<Face> faces;
        for (const MeshTriangle& triangle : object.mesh->triangles) {
            AddAsDrawn(LitFace(object, triangle), Matrix4{}, object.draw, viewport, faces);
        }
        FaceWriter(geometry).Write(faces);
    }
    return geometry;
}

MesaGeometry MesaMesh(const BenchObject& object, const Rect& viewport) {
    MesaGeometry geometry;
    std::vector<Face> faces;
    for (const MeshTriangle& triangle : object.mesh->triangles) {
        const std::array<Vec3, 3> corners = ObjectCorners(object, triangle);
        const Face face{corners, PointsOf(object, triangle), ColorOf(object, triangle), NormalOf(corners)};
        AddAsDrawn(face, object.draw.world, object.draw, viewport, faces);
    }
    FaceWriter(geometry).Write(faces);
    return geometry;
}

MesaInstance MesaInstanceOf(const BenchObject& object) {
    const Matrix4& world = object.draw.world;
    const Vec3 x = UpperRow(world, 0), y = UpperRow(world, 1), z = UpperRow(world, 2);
    return {{world.m[0], world.m[1], world.m[2]}, {Cross(y, z), Cross(z, x), Cross(x, y)}};
}
