#include "play/collision.h"

#include "base/limit.h"
#include "scene/selection.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cmath>
#include <vector>

constexpr float kLongestStep = 0.2f;    // world units
constexpr float kMostSteps = 64;        // per move
constexpr float kSkin = 0.001f;         // gap left between boxes, so that a resting object is not inside
constexpr float kLeastOverlap = 0.05f;  // world units of height that make an obstacle sideways

using Axis = float Vec3::*;

static bool Collides(const GameObject& object) {
    return object.hasCollision && !object.isEntity && !object.isCamera && !object.isLight;
}

static int32_t StepCount(Vec3 displacement) {
    const float longest =
        std::max({std::fabs(displacement.x), std::fabs(displacement.y), std::fabs(displacement.z)});
    return static_cast<int32_t>(Limit(std::ceil(longest / kLongestStep), 1.0f, kMostSteps));
}

// An object that rests on top of another slides over it, so obstacles sideways need some height in common.
static bool BlocksAlong(Axis axis, const Box& mover, const Box& other) {
    if (axis == &Vec3::y) return true;
    return !(std::min(mover.max.y, other.max.y) - std::max(mover.min.y, other.min.y) < kLeastOverlap);
}

// How far the mover shifts along the axis to leave the box that it met while stepping by `step`.
static float PushOut(Axis axis, float step, const Box& mover, const Box& other) {
    if (step > 0) return other.min.*axis - mover.max.*axis - kSkin;
    return other.max.*axis - mover.min.*axis + kSkin;
}

static void StopAlong(Axis axis, GameObject& object) {
    object.velocity.*axis = 0;
    if (axis == &Vec3::y) object.velocityY = 0;
}

static void Shift(int32_t index, Axis axis, float by, WorldBoxes& boxes) {
    editorState.scene[index].position.*axis += by;
    ObjectMoved(index, boxes);
}

namespace {

// The solid objects that a move may meet, found once for all of its steps.
struct Neighbours {
    Box region{};  // the mover must lie in it
    bool areKnown = false;
    std::vector<int32_t>& numbers;
};

}  // namespace

static Box Along(const Box& box, Vec3 way) {
    Box swept = box;
    Include({box.min + way, box.max + way}, swept);
    return swept;
}

// Finds the solid objects along the whole way with one search, in place of one for each step and each push.
// The list is right as long as the mover stays in the region that was searched; outside it every step
// searches for itself. A mover with children always searches: they move along, so their boxes do not stay
// where they were found.
static Neighbours FindNeighbours(int32_t index, Vec3 displacement, WorldBoxes& boxes) {
    constexpr float kMargin = 0.05f;  // world units: what pushing out moves sideways and back
    constexpr size_t kMost = 32;
    Neighbours found{.numbers = boxes.neighbours};
    found.region = Grown(Along(WorldBox(index, boxes), displacement), kMargin);
    found.areKnown = boxes.objects[index].firstChild < 0 &&
                     FindSolids(found.region, index, kMost, boxes, boxes.neighbours);
    return found;
}

// Like NextSolid, but from the list while the list is right.
static int32_t NextNeighbour(const Box& mover, int32_t after, int32_t index, const Neighbours& neighbours,
                             WorldBoxes& boxes) {
    if (!neighbours.areKnown || !Holds(neighbours.region, mover))
        return NextSolid(mover, after, index, boxes);
    for (const int32_t number : neighbours.numbers) {
        if (number > after && BoxesTouch(WorldBox(number, boxes), mover)) return number;
    }
    return -1;
}

// One step along one axis. The mover goes first and is then pushed back out of each solid object that it
// touches, in scene order, each object once. A push moves it away from what it met and perhaps into
// something else; the rest of the walk finds that only if it stands later in the scene. So the result
// depends on the order, and a search may skip objects that cannot touch but must not reorder the others.
static void MoveAlong(int32_t index, Axis axis, float step, const Neighbours& neighbours, WorldBoxes& boxes) {
    if (step == 0) return;
    Shift(index, axis, step, boxes);
    Box mover = WorldBox(index, boxes);
    int32_t met = -1;
    while ((met = NextNeighbour(mover, met, index, neighbours, boxes)) >= 0) {
        const Box other = WorldBox(met, boxes);
        if (!BlocksAlong(axis, mover, other)) continue;
        const float push = PushOut(axis, step, mover, other);
        mover.min.*axis += push;
        mover.max.*axis += push;
        Shift(index, axis, push, boxes);
        StopAlong(axis, editorState.scene[index]);
    }
}

// A long way is cut into short steps, so that a fast object does not jump over a wall. Each step goes along
// x, then y, then z: the mover stops along the axis that is blocked and slides along the others.
void MoveWithCollision(int32_t index, Vec3 displacement, WorldBoxes& boxes) {
    if (!IsObjectIndex(index)) return;
    GameObject& object = editorState.scene[index];
    if (!object.active) return;
    if (!Collides(object)) {
        object.position = object.position + displacement;
        ObjectMoved(index, boxes);
        return;
    }
    if (displacement == Vec3{}) return;
    const Neighbours neighbours = FindNeighbours(index, displacement, boxes);
    const int32_t count = StepCount(displacement);
    const auto divisor = static_cast<float>(count);
    for (int32_t i = 0; i < count; ++i) {
        MoveAlong(index, &Vec3::x, displacement.x / divisor, neighbours, boxes);
        MoveAlong(index, &Vec3::y, displacement.y / divisor, neighbours, boxes);
        MoveAlong(index, &Vec3::z, displacement.z / divisor, neighbours, boxes);
    }
}
