#include "render/face_light.h"

#include "render/points_avx2.h"

#include <algorithm>
#include <cassert>

static_assert(sizeof(MeshVertex) == 16);

FaceInWorld PlaceFace(const Mesh& mesh, const MeshDraw& draw, const MeshTriangle& triangle) {
    FaceInWorld face;
    for (size_t c = 0; c < 3; ++c) {
        const auto vertex = static_cast<size_t>(triangle[c]);
        assert(vertex < mesh.vertices.size());
        face.corners[c] = TransformPoint(draw.world, mesh.vertices[vertex].position);
    }
    const auto& p = face.corners;
    face.normal = Normalise(Cross(p[1] - p[0], p[2] - p[0]));
    face.toEye = Normalise(draw.eye - p[0]);
    return face;
}

FaceLight LightOfFace(const Mesh& mesh, const MeshDraw& draw, uint32_t triangle) {
    const auto [corners, normal, toEye] = PlaceFace(mesh, draw, mesh.triangles[triangle]);
    return {Dot(toEye, normal), Dot(normal, draw.light), Dot(normal, Normalise(draw.light + toEye))};
}

namespace {

// The vertex in one corner of eight faces.
struct CornerOfEight {
    const Mesh& mesh;
    const ScannedFace* faces;
    size_t corner;

    const float* operator[](size_t lane) const {
        const auto vertex = static_cast<size_t>(mesh.triangles[faces[lane].triangle][corner]);
        return &mesh.vertices[vertex].position.x;
    }
};

}  // namespace

ZEL_AVX2 static ZEL_INLINE PointsAvx2 PositionsAvx2(const CornerOfEight& at) {
    __m256 x = LoadPairAvx2(at[0], at[4]), y = LoadPairAvx2(at[1], at[5]);
    __m256 z = LoadPairAvx2(at[2], at[6]), color = LoadPairAvx2(at[3], at[7]);
    TransposeAvx2(x, y, z, color);
    return {x, y, z};
}

ZEL_AVX2 static ZEL_INLINE void LightsOfEightAvx2(const Mesh& mesh, const MeshDraw& draw,
                                                  const ScannedFace* faces, FaceLight* out) {
    const PointsAvx2 a = TransformedAvx2(draw.world, PositionsAvx2({mesh, faces, 0}));
    const PointsAvx2 b = TransformedAvx2(draw.world, PositionsAvx2({mesh, faces, 1}));
    const PointsAvx2 c = TransformedAvx2(draw.world, PositionsAvx2({mesh, faces, 2}));
    const PointsAvx2 normal = NormaliseAvx2(CrossAvx2(MinusAvx2(b, a), MinusAvx2(c, a)));
    const PointsAvx2 toEye = NormaliseAvx2(MinusAvx2(SpreadAvx2(draw.eye), a));
    const PointsAvx2 light = SpreadAvx2(draw.light);
    alignas(32) float cosines[3][8];
    _mm256_store_ps(cosines[0], DotAvx2(toEye, normal));
    _mm256_store_ps(cosines[1], DotAvx2(normal, light));
    _mm256_store_ps(cosines[2], DotAvx2(normal, NormaliseAvx2(PlusAvx2(light, toEye))));
    for (size_t lane = 0; lane < 8; ++lane)
        out[lane] = {cosines[0][lane], cosines[1][lane], cosines[2][lane]};
}

ZEL_AVX2 void FindLightsOfFaces(const Mesh& mesh, const MeshDraw& draw, std::span<const ScannedFace> faces,
                                std::vector<FaceLight>& out) {
    const size_t count = faces.size();
    out.resize(std::max<size_t>(count, 8));
    if (count < 8) {
        for (size_t i = 0; i < count; ++i) out[i] = LightOfFace(mesh, draw, faces[i].triangle);
        return;
    }
    // The last eight overlap those before them.
    for (size_t i = 0; i < count; i += 8) {
        const size_t first = std::min(i, count - 8);
        LightsOfEightAvx2(mesh, draw, &faces[first], &out[first]);
    }
}
