#include "scene/snapshots.h"

#include "scene/object_fields.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>

// Objects of a run. Small, because a change copies the run around it; large enough that the list of runs
// weighs little beside the objects.
constexpr ptrdiff_t kRunLength = 64;

static ptrdiff_t Length(const Scene& objects) { return static_cast<ptrdiff_t>(objects.size()); }

static ptrdiff_t ObjectCount(const SceneSnapshot& snapshot) {
    ptrdiff_t count = 0;
    for (const auto& run : snapshot.runs) count += Length(*run);
    return count;
}

// True when the objects of `run` stand in `scene` from `begin` on, under whatever parents.
static bool StandsAt(const Scene& run, const Scene& scene, ptrdiff_t begin) {
    if (begin < 0 || begin + Length(run) > Length(scene)) return false;
    return std::equal(run.begin(), run.end(), scene.begin() + begin, SameBitsButParent);
}

// Copies the objects begin .. end - 1 into new runs of about equal length.
static void AppendCopies(const Scene& scene, ptrdiff_t begin, ptrdiff_t end, SceneSnapshot& snapshot) {
    if (begin == end) return;
    // Joining a short run before keeps objects that are appended one by one from becoming runs of one.
    if (!snapshot.runs.empty() && Length(*snapshot.runs.back()) + end - begin <= kRunLength) {
        begin -= Length(*snapshot.runs.back());
        snapshot.runs.pop_back();
    }
    for (ptrdiff_t left = (end - begin + kRunLength - 1) / kRunLength; left > 0; --left) {
        const ptrdiff_t runEnd = begin + (end - begin) / left;
        snapshot.runs.push_back(std::make_shared<const Scene>(scene.begin() + begin, scene.begin() + runEnd));
        begin = runEnd;
    }
}

static bool AreParentsOf(const Scene& scene, const std::vector<int32_t>& parents) {
    return std::ranges::equal(scene, parents, {}, &GameObject::parentIndex);
}

static std::shared_ptr<const std::vector<int32_t>> ParentsOf(const Scene& scene,
                                                             const SceneSnapshot* earlier) {
    if (scene.empty()) return nullptr;
    if (earlier && earlier->parents && AreParentsOf(scene, *earlier->parents)) return earlier->parents;
    std::vector<int32_t> parents(scene.size());
    std::ranges::transform(scene, parents.begin(), &GameObject::parentIndex);
    return std::make_shared<const std::vector<int32_t>>(std::move(parents));
}

// Covers the scene with runs in its order, most of them taken from the earlier snapshot. Each earlier run is
// looked for where the one before it was found, then where the end of the scene says, then one object to
// either side: that finds everything after one change, and costs one comparison of all objects. A run that is
// not found is left to AppendCopies; missing one costs memory and never a wrong object, because a run is
// shared only where all of its objects are the same bits.
SceneSnapshot TakeSnapshot(const Scene& scene, const SceneSnapshot* earlier) {
    SceneSnapshot snapshot;
    ptrdiff_t taken = 0;  // objects of the scene that the snapshot holds by now
    if (earlier != nullptr) {
        // Runs behind something removed or inserted have moved: all by the same way up to the end where one
        // block changed, by one object between the two ends of a move in the Hierarchy.
        const ptrdiff_t growth = Length(scene) - ObjectCount(*earlier);
        ptrdiff_t earlierBegin = 0, shift = 0;
        for (const auto& run : earlier->runs) {
            for (const ptrdiff_t tried : {shift, growth, shift - 1, shift + 1}) {
                const ptrdiff_t begin = earlierBegin + tried;
                if (begin < taken || !StandsAt(*run, scene, begin)) continue;
                AppendCopies(scene, taken, begin, snapshot);
                snapshot.runs.push_back(run);
                taken = begin + Length(*run);
                shift = tried;
                break;
            }
            earlierBegin += Length(*run);
        }
    }
    AppendCopies(scene, taken, Length(scene), snapshot);
    snapshot.parents = ParentsOf(scene, earlier);
    return snapshot;
}

// Answers at the first difference. A scene that was never changed costs one comparison of all its objects,
// which is less than asking a file.
bool HoldsScene(const SceneSnapshot& snapshot, const Scene& scene) {
    if (ObjectCount(snapshot) != Length(scene)) return false;
    ptrdiff_t begin = 0;
    for (const auto& run : snapshot.runs) {
        if (!StandsAt(*run, scene, begin)) return false;
        begin += Length(*run);
    }
    return scene.empty() || AreParentsOf(scene, *snapshot.parents);
}

// Changes only what differs, object by object: an undo of one change in a large scene copies one object, and
// the names and scripts of all others keep their memory.
void RestoreSnapshot(const SceneSnapshot& snapshot, Scene& scene) {
    const ptrdiff_t count = ObjectCount(snapshot);
    ptrdiff_t at = 0;
    for (const auto& run : snapshot.runs) {
        for (const GameObject& object : *run) {
            const int32_t parent = (*snapshot.parents)[static_cast<size_t>(at)];
            if (at < Length(scene) && SameBitsButParent(scene[at], object)) {
                scene[at++].parentIndex = parent;
                continue;
            }
            // At the first difference the scene gets its length back, so that what follows a removed or
            // inserted block stands in its place again.
            if (Length(scene) > count)
                scene.erase(scene.begin() + at, scene.begin() + at + Length(scene) - count);
            if (Length(scene) < count) scene.insert(scene.begin() + at, count - Length(scene), GameObject{});
            scene[at] = object;
            scene[at++].parentIndex = parent;
        }
    }
    scene.resize(count);
}

KeptScene KeepScene() {
    return {.scene = editorState.scene,
            .selectedIndex = editorState.selectedIndex,
            .camera = editorState.camera,
            .animationTime = editorState.animationTime,
            .undoSteps = editorState.undoSteps,
            .sceneVersion = editorState.sceneVersion};
}

// The history comes back too: steps of what was shown meanwhile would bring its objects into the scene.
void PutSceneBack(std::optional<KeptScene>& kept) {
    assert(kept);
    editorState.scene = std::move(kept->scene);
    editorState.selectedIndex = kept->selectedIndex;
    editorState.camera = kept->camera;
    editorState.animationTime = kept->animationTime;
    editorState.undoSteps = std::move(kept->undoSteps);
    editorState.sceneVersion = kept->sceneVersion;
    kept.reset();
}
