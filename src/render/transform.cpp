#include "render/transform.h"

#include <cmath>

static Matrix4 RotationX(float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    return {{{{1, 0, 0, 0}, {0, c, -s, 0}, {0, s, c, 0}, {0, 0, 0, 1}}}};
}

static Matrix4 RotationY(float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    return {{{{c, 0, s, 0}, {0, 1, 0, 0}, {-s, 0, c, 0}, {0, 0, 0, 1}}}};
}

static Matrix4 RotationZ(float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    return {{{{c, -s, 0, 0}, {s, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}};
}

Matrix4 LocalMatrix(Vec3 position, Vec3 rotation, Vec3 scale) {
    const Matrix4 t{{{{1, 0, 0, position.x}, {0, 1, 0, position.y}, {0, 0, 1, position.z}, {0, 0, 0, 1}}}};
    const Matrix4 s{{{{scale.x, 0, 0, 0}, {0, scale.y, 0, 0}, {0, 0, scale.z, 0}, {0, 0, 0, 1}}}};
    const Matrix4 turned =
        MultiplyMatrix(RotationY(rotation.y), MultiplyMatrix(RotationX(rotation.x), RotationZ(rotation.z)));
    return MultiplyMatrix(t, MultiplyMatrix(turned, s));
}

Matrix4 LocalMatrix(const GameObject& object) {
    return LocalMatrix(object.position, object.rotation, object.scale);
}

Matrix4 WorldMatrix(std::span<const GameObject> scene, int32_t index) {
    const auto count = static_cast<int32_t>(scene.size());
    if (index < 0 || index >= count) return {};

    Matrix4 world = LocalMatrix(scene[index]);
    int32_t parent = scene[index].parentIndex;
    for (int32_t step = 0; step < count && parent >= 0 && parent < count; ++step) {
        world = MultiplyMatrix(LocalMatrix(scene[parent]), world);
        parent = scene[parent].parentIndex;
    }
    return world;
}

Vec3 WorldPosition(std::span<const GameObject> scene, int32_t index) {
    return Translation(WorldMatrix(scene, index));
}
