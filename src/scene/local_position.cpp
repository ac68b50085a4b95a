#include "scene/local_position.h"

#include "base/matrix_inverse.h"
#include "scene/transform.h"

Vec3 LocalPositionUnder(std::span<const GameObject> scene, int32_t parentIndex, Vec3 worldPosition) {
    if (parentIndex < 0 || parentIndex >= static_cast<int32_t>(scene.size())) return worldPosition;
    const Matrix4 parent = WorldMatrix(scene, parentIndex);
    Matrix4 inverse;
    if (!InvertMatrix(parent, inverse)) return worldPosition - Translation(parent);
    return TransformPoint(inverse, worldPosition);
}
