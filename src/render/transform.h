// From an object's own space to the world.
#pragma once

#include "render/matrix4.h"
#include "scene/game_object.h"

#include <cstdint>
#include <span>
#include <vector>

// Scale first, then the rotations about z, x and y, then the move: T * Ry * Rx * Rz * S.
Matrix4 LocalMatrix(Vec3 position, Vec3 rotation, Vec3 scale);
Matrix4 LocalMatrix(const GameObject& object);

// The local matrix under those of all ancestors. The identity for an index outside the scene. A parent index
// outside the scene ends the chain, and a cycle of parents ends after as many steps as there are objects. A
// chain of more than 1024 parents is damaged and followed for 64 steps.
Matrix4 WorldMatrix(std::span<const GameObject> scene, int32_t index);

// World matrices of many objects of one scene, for as long as it does not change: the local matrix of a
// parent is made once and not for everything below it.
class WorldMatrices {
public:
    explicit WorldMatrices(std::span<const GameObject> objects) : scene(objects) {}

    // The same bits as WorldMatrix(scene, index).
    Matrix4 Of(int32_t index);

private:
    const Matrix4& LocalOfParent(int32_t index);

    std::span<const GameObject> scene{};
    std::vector<int32_t> places{};  // by object: in `locals`, -1 for those that were not met; empty before
    std::vector<Matrix4> locals{};  // of the parents in the order of meeting
};

Vec3 WorldPosition(std::span<const GameObject> scene, int32_t index);
