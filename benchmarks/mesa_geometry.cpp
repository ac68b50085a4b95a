#include "mesa_geometry.h"

#include "base/limit.h"
#include "render/raster/face_ink.h"

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

// DrawMesh spreads a texture over one texel less than it has, OpenGL over all of them.
static float TexelShare(float coordinate, int32_t size) {
    return coordinate * static_cast<float>(size - 1) / static_cast<float>(size);
}

// The planar projection of a texture that is not repeated.
static TexturePoint PlanarPoint(Vec3 p, Vec3 normal, const TextureImage& texture) {
    const float nx = std::abs(normal.x), ny = std::abs(normal.y), nz = std::abs(normal.z);
    float across = p.x, up = p.y;
    if (ny >= nx && ny >= nz) {
        up = p.z;
    } else if (nx >= nz) {
        across = p.z;
    }
    return {TexelShare(across * 0.5f + 0.5f, texture.width), TexelShare(0.5f - up * 0.5f, texture.height)};
}

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
    for (size_t c = 0; c < 3; ++c) points[c] = PlanarPoint(corners[c], normal, *object.draw.texture);
    return points;
}

static Pixel ColorOf(const BenchObject& object, const MeshTriangle& triangle) {
    if (object.draw.texture != nullptr) return Pixel{0xFFFFFF};
    return object.mesh->vertices[static_cast<size_t>(triangle[0])].color;
}

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

MesaGeometry LitMesaGeometry(const BenchScene& scene) {
    MesaGeometry geometry;
    for (const BenchObject& object : scene.objects) {
        std::vector<Face> faces;
        for (const MeshTriangle& triangle : object.mesh->triangles) {
            faces.push_back(LitFace(object, triangle));
        }
        FaceWriter(geometry).Write(faces);
    }
    return geometry;
}

MesaGeometry MesaMesh(const BenchObject& object) {
    MesaGeometry geometry;
    std::vector<Face> faces;
    for (const MeshTriangle& triangle : object.mesh->triangles) {
        const std::array<Vec3, 3> corners = ObjectCorners(object, triangle);
        faces.push_back({corners, PointsOf(object, triangle), ColorOf(object, triangle), NormalOf(corners)});
    }
    FaceWriter(geometry).Write(faces);
    return geometry;
}

static Vec3 UpperRow(const Matrix4& a, size_t row) { return {a.m[row][0], a.m[row][1], a.m[row][2]}; }

MesaInstance MesaInstanceOf(const BenchObject& object) {
    const Matrix4& world = object.draw.world;
    const Vec3 x = UpperRow(world, 0), y = UpperRow(world, 1), z = UpperRow(world, 2);
    return {{world.m[0], world.m[1], world.m[2]}, {Cross(y, z), Cross(z, x), Cross(x, y)}};
}
