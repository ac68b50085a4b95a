// From an object's own space to the world, and back.
#pragma once

#include "base/matrix4.h"
#include "state/game_object.h"

#include <cstdint>
#include <span>
#include <vector>

// Scale first, then the rotations about z, x and y, then the move: T * Ry * Rx * Rz * S.
Matrix4 LocalMatrix(Vec3 position, Vec3 rotation, Vec3 scale);
Matrix4 LocalMatrix(const GameObject& object);

// The local matrix under those of all ancestors. The identity for an index outside the scene. A parent index
// outside the scene ends the chain. Only a chain that leads into a cycle of parents is cut: after 64 parents,
// or as many as there are objects.
//
// Up to 1024 parents are multiplied from the object upwards. A longer chain is multiplied in stretches, so
// that objects share the work: each stretch begins below an ancestor that has a multiple of 64 parents.
Matrix4 WorldMatrix(std::span<const GameObject> scene, int32_t index);

// World matrices of many objects of one scene: the local matrix of a parent is made once and not for
// everything below it, and of a long chain each stretch is multiplied once. All of a scene costs at most 1024
// products an object, and 64 from there on, however long its chains are.
class WorldMatrices {
public:
    WorldMatrices() = default;
    explicit WorldMatrices(std::span<const GameObject> objects) : scene(objects) {}

    // The same bits as WorldMatrix(scene, index).
    Matrix4 Of(int32_t index);

    // To be told where the scene lies after objects were added at its end. No earlier object may have named
    // one of them as its parent.
    void Follow(std::span<const GameObject> objects) { scene = objects; }

    // To be told of an object that was moved, turned or scaled, and of every object below it that was asked
    // for.
    void Forget(int32_t index);

    // How many parents have been visited so far.
    int64_t Steps() const { return steps; }

private:
    struct Known {
        int32_t parents = -1;   // how many, or one of the marks in the source
        int32_t local = -1;     // in `locals`, -1 for an object that nobody is below
        int32_t world = -1;     // in `worlds`, likewise; only where a stretch ends
        bool hasLocal = false;  // `local` is up to date
        bool hasWorld = false;  // `world` is
    };

    int32_t ParentCount(int32_t index);
    const Matrix4& LocalOfParent(int32_t index);
    Matrix4 Climb(int32_t index, int32_t parents);
    int32_t StretchAbove(int32_t index, int32_t parents);
    void KeepWorld(int32_t index, const Matrix4& world);
    Matrix4 DeepWorld(int32_t index, int32_t parents);

    std::span<const GameObject> scene{};
    std::vector<Known> known{};  // by object; as long as the scene once a child was asked for
    std::vector<Matrix4> locals{}, worlds{};
    std::vector<int32_t> waiting{};  // ends of stretches that DeepWorld goes back to
    int64_t steps = 0;
};

Vec3 WorldPosition(std::span<const GameObject> scene, int32_t index);

// The local position that puts a child of `parentIndex` at `worldPosition`. Under a parent that flattens
// space it is the distance from the parent; without a parent in the scene, the world position itself.
Vec3 LocalPositionUnder(std::span<const GameObject> scene, int32_t parentIndex, Vec3 worldPosition);

// True for an object that the user can move, turn and scale: with a mesh, or an entity, a camera, a light or
// a text.
bool HasPlace(const GameObject& object);
