#include "render/raster/face_ink.h"

#include "base/limit.h"

#include <algorithm>
#include <cmath>

constexpr float kSmallestScale = 0.001f;  // of a world axis, for texture coordinates
constexpr float kAmbient = 0.3f;

// ---- Shading: a constant, a diffuse part and a highlight. ink_kernel.h repeats these operations in this
// order, because a face may be lit here or there and must get the same colour.

float Brightness(float lightCosine, float halfwayCosine, float roughness, float gloss) {
    const float diffuse = std::max(lightCosine, 0.0f), specular = std::max(halfwayCosine, 0.0f);
    return kAmbient + (0.62f - 0.12f * roughness) * diffuse +
           gloss * (1.15f - 0.55f * roughness) * std::pow(specular, (1 - roughness) * 72 + 8);
}

float FaceBrightness(Vec3 normal, Vec3 toEye, Vec3 light, float roughness, float gloss) {
    return Brightness(Dot(normal, light), Dot(normal, Normalise(light + toEye)), roughness, gloss);
}

Pixel Tinted(Pixel color, uint32_t tint) {
    if (tint == 0) return color;
    const auto c = static_cast<uint32_t>(color);
    // Common bits plus half of the bits that differ. The lowest bit of each channel is masked out before
    // the shift, so that nothing moves into the channel below.
    return Pixel{((c & tint) + (((c ^ tint) & 0xFEFEFE) >> 1)) & 0xFFFFFF};
}

Pixel Lit(Pixel color, float brightness) {
    const float factor = Limit(brightness, kDarkest, kBrightest);
    const auto c = static_cast<uint32_t>(color);
    const auto channel = [c, factor](int shift) {
        const float lit = static_cast<float>(c >> shift & 0xFF) * factor;
        return static_cast<uint32_t>(std::min(lit, 255.0f)) << shift;
    };
    return Pixel{channel(16) | channel(8) | channel(0)};
}

// ---- Inks. The fill calls one of the three functions at the end of this file when the first pixel of a
// face has passed the depth test. Whether the face turns to the eye is decided exactly here: the scan only
// left out faces that certainly turn away. A textured face maps its corners in object space onto the plane
// that it mostly faces, so that a mesh needs no texture coordinates of its own.

FaceInWorld PlaceFace(const MeshVertex* vertices, const MeshTriangle& triangle, const MeshDraw& draw) {
    FaceInWorld face;
    for (size_t c = 0; c < 3; ++c)
        face.corners[c] = TransformPoint(draw.world, vertices[triangle[c]].position);
    const auto& p = face.corners;
    face.normal = Normalise(Cross(p[1] - p[0], p[2] - p[0]));
    face.toEye = Normalise(draw.eye - p[0]);
    return face;
}

FaceLight LightOfFace(const MeshVertex* vertices, const MeshTriangle& triangle, const MeshDraw& draw) {
    const auto [corners, normal, toEye] = PlaceFace(vertices, triangle, draw);
    return {Dot(toEye, normal), Dot(normal, draw.light), Dot(normal, Normalise(draw.light + toEye))};
}

static float ColumnLength(const Matrix4& a, size_t column) {
    return std::max(Length({a.m[0][column], a.m[1][column], a.m[2][column]}), kSmallestScale);
}

AxisScales WorldScales(const Matrix4& world) {
    return {ColumnLength(world, 0), ColumnLength(world, 1), ColumnLength(world, 2)};
}

TexturePoint TextureCoordinates(Vec3 p, Vec3 normal, const AxisScales& scales, bool repeat) {
    const float nx = std::abs(normal.x), ny = std::abs(normal.y), nz = std::abs(normal.z);
    float a = p.x, b = p.y, scaleA = scales.x, scaleB = scales.y;
    if (ny >= nx && ny >= nz) {
        b = p.z;
        scaleB = scales.z;
    } else if (nx >= nz) {
        a = p.z;
        scaleA = scales.z;
    }
    if (repeat) return {a * scaleA * 0.5f, b * scaleB * 0.5f};
    return {a * 0.5f + 0.5f, b * 0.5f + 0.5f};
}

static const MeshTriangle& TriangleOf(const MeshToDraw& mesh, size_t face) {
    return mesh.triangles[mesh.faces[face].triangle];
}

bool FindFlatInk(const MeshToDraw& mesh, size_t face, FaceInk& ink) {
    const MeshTriangle& triangle = TriangleOf(mesh, face);
    const MeshDraw& draw = *mesh.draw;
    const FaceLight light =
        mesh.lights != nullptr ? mesh.lights[face] : LightOfFace(mesh.vertices, triangle, draw);
    if (!(light.eye > 0)) return false;
    const float brightness = Brightness(light.light, light.halfway, draw.roughness, draw.gloss);
    ink.color = Lit(Tinted(mesh.vertices[triangle[0]].color, draw.tint), brightness);
    return true;
}

bool FindTexturedInk(const MeshToDraw& mesh, size_t face, FaceInk& ink) {
    const MeshTriangle& triangle = TriangleOf(mesh, face);
    const MeshDraw& draw = *mesh.draw;
    const FaceInWorld placed = PlaceFace(mesh.vertices, triangle, draw);
    if (!(Dot(placed.toEye, placed.normal) > 0)) return false;
    for (size_t c = 0; c < 3; ++c) {
        const Vec3& position = mesh.vertices[triangle[c]].position;
        ink.points[c] = TextureCoordinates(position, placed.normal, mesh.scales, draw.repeat);
    }
    ink.brightness = FaceBrightness(placed.normal, placed.toEye, draw.light, draw.roughness, draw.gloss);
    return true;
}

bool FindKnownInk(const MeshToDraw& mesh, size_t, FaceInk& ink) {
    ink = *mesh.knownInk;
    return true;
}
