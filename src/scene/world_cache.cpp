#include "scene/world_cache.h"

#include "base/prefetch.h"

#include <array>
#include <bit>

// Bits and not numbers: a matrix made from -0 differs from one made from 0, and not a number is itself.
static bool AreSame(Vec3 a, Vec3 b) {
    using Bits = std::array<uint32_t, 3>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

// True when the object stands as it stood. Else notes how it stands now.
static bool StandsStill(const GameObject& object, CachedWorld& cached) {
    if (AreSame(object.position, cached.position) && AreSame(object.rotation, cached.rotation) &&
        AreSame(object.scale, cached.scale) && object.parentIndex == cached.parent) {
        return true;
    }
    cached.position = object.position;
    cached.rotation = object.rotation;
    cached.scale = object.scale;
    cached.parent = object.parentIndex;
    return false;
}

namespace {

enum class Verdict : uint8_t { Unknown, OnTheWay, Still, Moved };

}  // namespace

// Marks everything below a moved object as out of date. Each walk goes up to the first object that is decided
// and then decides all that it came through, so every object is walked through once. An object that leads
// into a cycle of parents counts as moved.
static void ForgetBelowMoved(std::vector<Verdict>& verdicts, std::vector<CachedWorld>& objects) {
    const auto count = static_cast<int32_t>(objects.size());
    const auto parentOf = [&](int32_t index) {
        const int32_t parent = objects[index].parent;
        return parent >= 0 && parent < count ? parent : -1;
    };
    for (int32_t i = 0; i < count; ++i) {
        int32_t at = i;
        for (; at >= 0 && verdicts[at] == Verdict::Unknown; at = parentOf(at))
            verdicts[at] = Verdict::OnTheWay;
        const bool isStill = at < 0 || verdicts[at] == Verdict::Still;
        for (at = i; at >= 0 && verdicts[at] == Verdict::OnTheWay; at = parentOf(at)) {
            verdicts[at] = isStill ? Verdict::Still : Verdict::Moved;
            if (!isStill) objects[at].isFresh = false;
        }
    }
}

// Finds out which cached matrices still hold for this scene. A world matrix depends on the place, turn and
// size of the object and of all above it, and on nothing else. So those are compared, which reads memory once
// instead of making and multiplying matrices, and nobody has to tell the cache about a change. If the number
// of objects has changed, indices mean other objects, and everything is made anew.
FrameWorlds::FrameWorlds(std::span<const GameObject> scene, CachedWorlds& worlds)
    : computed(scene), cached(worlds) {
    std::vector<CachedWorld>& objects = cached.objects;
    if (objects.size() != scene.size()) objects.assign(scene.size(), {});
    std::vector<Verdict> verdicts;
    for (size_t i = 0; i < scene.size(); ++i) {
        if (i + kPrefetchAhead < scene.size()) {
            Prefetch(&scene[i + kPrefetchAhead].position);
            Prefetch(&scene[i + kPrefetchAhead].parentIndex);
        }
        if (StandsStill(scene[i], objects[i])) continue;
        objects[i].isFresh = false;
        if (verdicts.empty()) verdicts.assign(scene.size(), Verdict::Unknown);
        verdicts[i] = Verdict::Moved;
    }
    if (!verdicts.empty()) ForgetBelowMoved(verdicts, objects);
}

const Matrix4& FrameWorlds::Of(int32_t index) {
    CachedWorld& object = cached.objects[static_cast<size_t>(index)];
    if (!object.isFresh) object.world = computed.Of(index);
    object.isFresh = true;
    return object.world;
}
