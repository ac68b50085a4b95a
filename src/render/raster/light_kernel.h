// How the faces of a mesh stand to the eye and to the light, one face in each lane.
//
// In go the faces that the scan has left, out come three cosines for each: to the eye, which decides exactly
// whether the face is drawn, to the light, and to the middle of both. The operations are those of
// LightOfFace, which lights one face alone. The power of the highlight is left to FindFaceInk, for the faces
// that show.
#pragma once

#include "render/raster/kernels.h"
#include "render/raster/lane_points.h"

namespace {

// The numbers of a vector of faces.
struct FaceGroup {
    uint32_t triangles[kLanes];
};

ZEL_INLINE Points LoadPositions(const MeshToDraw& mesh, const FaceGroup& group, int corner) {
    Points loaded;
    Floats color;
    const auto* indices = reinterpret_cast<const int32_t*>(mesh.triangles);
    const auto positionOf = [&](int lane) {
        const size_t at = 3 * static_cast<size_t>(group.triangles[lane]) + static_cast<size_t>(corner);
        return &mesh.vertices[indices[at]].position.x;
    };
    LoadRecords(positionOf, loaded.x, loaded.y, loaded.z, color);
    return loaded;
}

// The list's last face stands in for those that are missing in its last vector.
void LightAll(const MeshToDraw& mesh, FaceLight* out) {
    const MeshDraw& draw = *mesh.draw;
    const Points light = Splat(draw.light), eye = Splat(draw.eye);
    for (size_t i = 0; i < mesh.faceCount; i += kLanes) {
        FaceGroup group;
        for (size_t lane = 0; lane < static_cast<size_t>(kLanes); ++lane) {
            const size_t face = i + lane < mesh.faceCount ? i + lane : mesh.faceCount - 1;
            group.triangles[lane] = mesh.faces[face].triangle;
        }
        const Points a = Transformed(draw.world, LoadPositions(mesh, group, 0));
        const Points b = Transformed(draw.world, LoadPositions(mesh, group, 1));
        const Points c = Transformed(draw.world, LoadPositions(mesh, group, 2));
        const Points normal = Normalise(Cross(b - a, c - a)), toEye = Normalise(eye - a);
        float cosines[3][kLanes];
        Store(cosines[0], Dot(toEye, normal));
        Store(cosines[1], Dot(normal, light));
        Store(cosines[2], Dot(normal, Normalise(light + toEye)));
        for (size_t lane = 0; lane < static_cast<size_t>(kLanes); ++lane)
            out[i + lane] = {cosines[0][lane], cosines[1][lane], cosines[2][lane]};
    }
    LeaveVectors();
}

}  // namespace
