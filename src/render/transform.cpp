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

// A chain of parents that is longer is taken for a damaged scene. It is then followed for a few steps only: a
// scene of a hundred thousand such objects must still draw.
constexpr int32_t kLongestChain = 1024, kDamagedSteps = 64;

static bool IsIndexOf(int32_t index, std::span<const GameObject> scene) {
    return index >= 0 && static_cast<size_t>(index) < scene.size();
}

// How many parents of an object are followed: all, but in a cycle as many as there are objects.
static int32_t StepsUpward(std::span<const GameObject> scene, int32_t index) {
    const auto count = static_cast<int32_t>(scene.size());
    int32_t steps = 0;
    for (int32_t parent = scene[index].parentIndex; IsIndexOf(parent, scene) && steps < count; ++steps) {
        if (steps > kLongestChain) return kDamagedSteps;
        parent = scene[parent].parentIndex;
    }
    return steps;
}

Matrix4 WorldMatrix(std::span<const GameObject> scene, int32_t index) {
    if (!IsIndexOf(index, scene)) return {};

    Matrix4 world = LocalMatrix(scene[index]);
    int32_t parent = scene[index].parentIndex;
    for (int32_t steps = StepsUpward(scene, index); steps > 0; --steps) {
        world = MultiplyMatrix(LocalMatrix(scene[parent]), world);
        parent = scene[parent].parentIndex;
    }
    return world;
}

const Matrix4& WorldMatrices::LocalOfParent(int32_t index) {
    if (places.empty()) places.assign(scene.size(), -1);
    int32_t& place = places[static_cast<size_t>(index)];
    if (place < 0) {
        place = static_cast<int32_t>(locals.size());
        locals.push_back(LocalMatrix(scene[index]));
    }
    return locals[static_cast<size_t>(place)];
}

Matrix4 WorldMatrices::Of(int32_t index) {
    if (!IsIndexOf(index, scene)) return {};

    Matrix4 world = LocalMatrix(scene[index]);
    int32_t parent = scene[index].parentIndex;
    for (int32_t steps = StepsUpward(scene, index); steps > 0; --steps) {
        world = MultiplyMatrix(LocalOfParent(parent), world);
        parent = scene[parent].parentIndex;
    }
    return world;
}

Vec3 WorldPosition(std::span<const GameObject> scene, int32_t index) {
    return Translation(WorldMatrix(scene, index));
}
