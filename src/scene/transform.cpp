#include "scene/transform.h"

#include "base/limit.h"

#include <algorithm>
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

// Scales first, then turns about z, x and y in this order, then moves.
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

constexpr int32_t kPlainParents = 1024;  // chains up to here are one product, as everybody would write it
constexpr int32_t kStretch = 64;         // parents between two ancestors whose world matrices are shared
constexpr int32_t kStepsOfCycle = 64;    // what leads into a cycle must still draw, a hundred thousand times
static_assert(kPlainParents % kStretch == 0);

// In place of a number of parents.
constexpr int32_t kUnknown = -1, kEndless = -2, kOnTheWay = -3;

// -1 where the chain ends.
static int32_t ParentOf(int32_t index, std::span<const GameObject> scene) {
    const int32_t parent = scene[index].parentIndex;
    return IsIndexOf(parent, scene.size()) ? parent : -1;
}

// How many parents are followed in place of `kEndless`.
static int32_t StepsOfCycle(std::span<const GameObject> scene) {
    return static_cast<int32_t>(std::min<size_t>(scene.size(), kStepsOfCycle));
}

// How many parents the world matrix of an object takes in. A cycle is found without memory: a mark moves up
// to the walk whenever the walk has doubled, and a walk that goes round meets the mark within three times the
// length of the cycle.
static int32_t CountParents(std::span<const GameObject> scene, int32_t index) {
    int32_t count = 0, mark = index;
    int64_t nextMark = 1;
    for (int32_t at = ParentOf(index, scene); at >= 0; at = ParentOf(at, scene)) {
        if (at == mark) return StepsOfCycle(scene);
        ++count;
        if (count != nextMark) continue;
        mark = at;
        nextMark *= 2;
    }
    return count;
}

// The local matrix of an object under those of its next `parents` ancestors.
static Matrix4 Climb(std::span<const GameObject> scene, int32_t index, int32_t parents) {
    Matrix4 product = LocalMatrix(scene[index]);
    for (; parents > 0; --parents) {
        index = scene[index].parentIndex;
        product = MultiplyMatrix(LocalMatrix(scene[index]), product);
    }
    return product;
}

// How many ancestors of an object with so many parents stand above the next one that ends a stretch, that one
// counted.
static int32_t ParentsOfStretch(int32_t parents) { return (parents - 1) / kStretch * kStretch; }

// The ends of the stretches above an object, the next one first.
static std::vector<int32_t> StretchesAbove(std::span<const GameObject> scene, int32_t index,
                                           int32_t parents) {
    std::vector<int32_t> ends;
    while (parents > kPlainParents) {
        index = scene[index].parentIndex;
        --parents;
        if (parents % kStretch == 0) ends.push_back(index);
    }
    return ends;
}

// The product of the local matrices from the object up to its root. A chain of ordinary length is multiplied
// from the object upwards. A longer one is cut into stretches whose products many objects can share, so that
// a scene that is one chain costs no more than its length; products that are grouped in another way may
// differ in their last bits, and WorldMatrices groups them in this very way.
Matrix4 WorldMatrix(std::span<const GameObject> scene, int32_t index) {
    if (!IsIndexOf(index, scene.size())) return {};
    const int32_t parents = CountParents(scene, index);
    if (parents <= kPlainParents) return Climb(scene, index, parents);

    const std::vector<int32_t> ends = StretchesAbove(scene, index, parents);
    Matrix4 world = Climb(scene, ends.back(), kPlainParents);
    for (size_t i = ends.size() - 1; i > 0; --i) {
        world = MultiplyMatrix(world, Climb(scene, ends[i - 1], kStretch - 1));
    }
    return MultiplyMatrix(world, Climb(scene, index, parents - ParentsOfStretch(parents) - 1));
}

// Walks up to the first object whose count is known, then walks the same way again and writes down the count
// of each. Every object is walked through twice at most, however often anybody asks.
int32_t WorldMatrices::ParentCount(int32_t index) {
    if (known.size() < scene.size()) known.resize(scene.size());
    int32_t at = index, walked = 0;
    for (; at >= 0 && known[at].parents == kUnknown; at = ParentOf(at, scene)) {
        known[at].parents = kOnTheWay;
        ++walked;
    }
    steps += walked;
    const int32_t above = at < 0 ? -1 : known[at].parents;
    const bool isEndless = at >= 0 && above < 0;  // it is, or the walk has come back to where it was
    for (at = index; at >= 0 && known[at].parents == kOnTheWay; at = ParentOf(at, scene)) {
        known[at].parents = isEndless ? kEndless : above + walked;
        --walked;
    }
    const int32_t parents = known[index].parents;
    return parents == kEndless ? StepsOfCycle(scene) : parents;
}

const Matrix4& WorldMatrices::LocalOfParent(int32_t index) {
    Known& object = known[index];
    if (object.local < 0) {
        object.local = static_cast<int32_t>(locals.size());
        locals.emplace_back();
    }
    Matrix4& local = locals[static_cast<size_t>(object.local)];
    if (!object.hasLocal) local = LocalMatrix(scene[index]);
    object.hasLocal = true;
    return local;
}

Matrix4 WorldMatrices::Climb(int32_t index, int32_t parents) {
    Matrix4 product = LocalMatrix(scene[index]);
    steps += parents;
    for (; parents > 0; --parents) {
        index = scene[index].parentIndex;
        product = MultiplyMatrix(LocalOfParent(index), product);
    }
    return product;
}

// The next ancestor that ends a stretch.
int32_t WorldMatrices::StretchAbove(int32_t index, int32_t parents) {
    const int32_t way = parents - ParentsOfStretch(parents);
    steps += way;
    for (int32_t i = 0; i < way; ++i) index = scene[index].parentIndex;
    return index;
}

void WorldMatrices::KeepWorld(int32_t index, const Matrix4& world) {
    Known& object = known[index];
    if (object.world < 0) {
        object.world = static_cast<int32_t>(worlds.size());
        worlds.emplace_back();
    }
    worlds[static_cast<size_t>(object.world)] = world;
    object.hasWorld = true;
}

// Climbs from one end of a stretch to the next until one has a known world matrix, then comes down again and
// multiplies stretch by stretch. The ends wait on a list and not on the call stack, because a chain may be as
// long as the scene.
Matrix4 WorldMatrices::DeepWorld(int32_t index, int32_t parents) {
    waiting.clear();
    int32_t end = index, endParents = parents;
    while (endParents > kPlainParents) {
        end = StretchAbove(end, endParents);
        endParents = ParentsOfStretch(endParents);
        if (known[end].hasWorld) break;
        waiting.push_back(end);
    }
    if (!known[end].hasWorld) {
        KeepWorld(end, Climb(end, kPlainParents));
        waiting.pop_back();
    }
    Matrix4 world = worlds[static_cast<size_t>(known[end].world)];
    for (; !waiting.empty(); waiting.pop_back()) {
        world = MultiplyMatrix(world, Climb(waiting.back(), kStretch - 1));
        KeepWorld(waiting.back(), world);
    }
    return MultiplyMatrix(world, Climb(index, parents - ParentsOfStretch(parents) - 1));
}

Matrix4 WorldMatrices::Of(int32_t index) {
    if (!IsIndexOf(index, scene.size())) return {};
    if (ParentOf(index, scene) < 0) return LocalMatrix(scene[index]);
    const int32_t parents = ParentCount(index);
    return parents <= kPlainParents ? Climb(index, parents) : DeepWorld(index, parents);
}

void WorldMatrices::Forget(int32_t index) {
    if (static_cast<size_t>(index) >= known.size()) return;
    known[index].hasLocal = false;
    known[index].hasWorld = false;
}

Vec3 WorldPosition(std::span<const GameObject> scene, int32_t index) {
    return Translation(WorldMatrix(scene, index));
}

Vec3 LocalPositionUnder(std::span<const GameObject> scene, int32_t parentIndex, Vec3 worldPosition) {
    if (!IsIndexOf(parentIndex, scene.size())) return worldPosition;
    const Matrix4 parent = WorldMatrix(scene, parentIndex);
    Matrix4 inverse;
    if (!InvertMatrix(parent, inverse)) return worldPosition - Translation(parent);
    return TransformPoint(inverse, worldPosition);
}

bool HasPlace(const GameObject& object) {
    return object.meshIndex >= 0 || object.isEntity || object.isCamera || object.isLight || object.isText;
}
