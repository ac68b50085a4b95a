#include "play/world_boxes.h"

#include "scene/selection.h"
#include "state/editor_state.h"

#include <algorithm>
#include <limits>

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr Box kNowhere{{kNotANumber, kNotANumber, kNotANumber}, {kNotANumber, kNotANumber, kNotANumber}};

// How the boxes are cached. A box is computed when it is first asked for and stays until somebody reports a
// move of its object or of one above it. Only objects that were asked for are marked as used, together with
// all above them: a report then reaches everything that depends on the move and walks through nothing else.
// The tree over the solid objects follows lazily. Moved boxes are listed as stale and entered when the tree
// is searched next, because a mover changes its box many times before another object asks. A move that is
// not reported leaves a wrong box, which the random games beside their plain twins would show.

static int32_t ObjectCount() { return static_cast<int32_t>(editorState.scene.size()); }

// The box that stands for an object in the tree. Nothing touches an object that is no longer solid.
static NumberedBox InTree(int32_t index, const WorldBoxes& boxes) {
    return {IsSolid(index) ? boxes.objects[index].box : kNowhere, index};
}

// A box depends on the object and on all above it. An object that is marked has marked parents, so the way
// up ends at the first marked one, in a cycle too.
static void MarkUsed(int32_t index, WorldBoxes& boxes) {
    for (; IsObjectIndex(index) && !boxes.objects[index].isUsed; ++boxes.steps) {
        boxes.objects[index].isUsed = true;
        index = editorState.scene[index].parentIndex;
    }
}

static void ComputeBox(int32_t index, WorldBoxes& boxes) {
    CachedBox& cached = boxes.objects[index];
    cached.box = WorldBox(index, boxes.worlds, cached.shape);
    cached.isFresh = true;
    MarkUsed(index, boxes);
}

static void RefreshBox(int32_t index, WorldBoxes& boxes) {
    if (boxes.objects[index].isFresh) return;
    ComputeBox(index, boxes);
    if (boxes.hasTree) MoveBox(InTree(index, boxes), boxes.solids);
}

// True when the chain of parents runs into a cycle. Parts of it that a walk since `firstWalk` has visited are
// not walked again.
static bool LeadsIntoCycle(int32_t index, uint32_t firstWalk, WorldBoxes& boxes) {
    const uint32_t walk = ++boxes.visits;
    while (IsObjectIndex(index)) {
        uint32_t& lastVisit = boxes.objects[index].lastVisit;
        if (lastVisit >= firstWalk) return lastVisit == walk;
        lastVisit = walk;
        index = editorState.scene[index].parentIndex;
    }
    return false;
}

// Adds the objects from `first` on to the caches: as children of their parents and, once there is a tree, to
// the tree.
static void TakeIn(int32_t first, WorldBoxes& boxes) {
    const int32_t count = ObjectCount();
    const uint32_t firstWalk = boxes.visits + 1;
    boxes.objects.resize(static_cast<size_t>(count));
    boxes.worlds.Follow(editorState.scene);
    for (int32_t i = first; i < count; ++i) {
        const int32_t parent = editorState.scene[i].parentIndex;
        // Every cycle has a parent that does not stand before its child.
        if (parent >= count || (parent >= i && LeadsIntoCycle(i, firstWalk, boxes))) {
            boxes.dependsOnCount = true;
        }
        if (parent < 0 || parent >= count) continue;
        boxes.objects[i].nextSibling = boxes.objects[parent].firstChild;
        boxes.objects[parent].firstChild = i;
    }
    if (!boxes.hasTree) return;
    for (int32_t i = first; i < count; ++i) {
        if (!IsSolid(i)) continue;
        ComputeBox(i, boxes);
        AddBox({boxes.objects[i].box, i}, boxes.solids);
    }
}

static MeshIdentities MeshesOfLibrary() {
    MeshIdentities identities;
    for (const MeshAsset& asset : editorState.meshes) identities.push_back(asset.mesh.measures.identity);
    return identities;
}

// Notices objects that were added at the end. Usually nothing that is cached depends on them. But one may
// come with new meshes, become the parent of an object that named its index before it existed, or lengthen
// the way through a cycle of parents: then everything is forgotten.
static void KeepUpWithScene(WorldBoxes& boxes) {
    const auto known = static_cast<int32_t>(boxes.objects.size());
    if (known == ObjectCount()) return;
    if (boxes.dependsOnCount || boxes.meshes.size() != editorState.meshes.size()) {
        boxes = {.meshes = MeshesOfLibrary()};
        TakeIn(0, boxes);
    } else {
        TakeIn(known, boxes);
    }
}

void StartPass(WorldBoxes& boxes) {
    const bool isSame = std::ranges::equal(boxes.meshes, editorState.meshes,
                                           [](const auto& identity, const MeshAsset& asset) {
                                               return identity == asset.mesh.measures.identity;
                                           });
    if (!isSame || boxes.objects.size() != editorState.scene.size()) {
        boxes = {};
        return;
    }
    for (CachedBox& cached : boxes.objects) cached = {.shape = cached.shape};
    boxes.worlds = WorldMatrices(editorState.scene);
    boxes.hasTree = false;
    boxes.stale.clear();
    boxes.visits = 0;
    boxes.dependsOnCount = false;
    TakeIn(0, boxes);
}

// True when the tree of an earlier pass holds the solid objects of this one and no others.
static bool HoldsExactly(const std::vector<NumberedBox>& solids, const BoxTree& tree) {
    if (tree.boxes.size() != solids.size() || tree.parts.size() != solids.size()) return false;
    return std::ranges::all_of(solids, [&tree](const NumberedBox& solid) {
        const auto number = static_cast<size_t>(solid.number);
        return number < tree.slots.size() && tree.slots[number] >= 0;
    });
}

// Builds the tree, or measures the tree of the pass before again if it holds the same objects: neighbours
// seldom change within a second, and measuring costs less than building.
static void MakeTree(WorldBoxes& boxes) {
    constexpr int32_t kOldest = 60;  // passes after which neighbours may have parted
    std::vector<NumberedBox> solids;
    for (int32_t i = 0; i < ObjectCount(); ++i) {
        if (!IsSolid(i)) continue;
        RefreshBox(i, boxes);
        solids.push_back({boxes.objects[i].box, i});
    }
    if (boxes.treeAge < kOldest && HoldsExactly(solids, boxes.solids)) {
        RefitBoxTree(boxes.solids, [&boxes](int32_t number) { return boxes.objects[number].box; });
        ++boxes.treeAge;
    } else {
        boxes.solids = BuildBoxTree(std::move(solids));
        boxes.treeAge = 0;
    }
    boxes.hasTree = true;
}

// Brings the tree up to date. The box of `except` may stay stale: the mover asks about others, and its own
// box changes again with its next step.
static void RefreshTree(int32_t except, WorldBoxes& boxes) {
    if (!boxes.hasTree) MakeTree(boxes);
    std::erase_if(boxes.stale, [&](int32_t index) {
        if (index == except) return false;
        RefreshBox(index, boxes);
        boxes.objects[index].isStale = false;
        return true;
    });
}

static void Outdate(int32_t index, WorldBoxes& boxes) {
    CachedBox& cached = boxes.objects[index];
    cached.isFresh = false;
    cached.isUsed = false;
    boxes.worlds.Forget(index);
    if (!boxes.hasTree || cached.isStale || !IsSolid(index)) return;
    cached.isStale = true;
    boxes.stale.push_back(index);
}

bool IsSolid(int32_t index) {
    const GameObject& object = editorState.scene[index];
    return object.active && object.hasCollision && object.hasShape && object.meshIndex >= 0;
}

Box WorldBox(int32_t index, WorldBoxes& boxes) {
    KeepUpWithScene(boxes);
    RefreshBox(index, boxes);
    return boxes.objects[index].box;
}

const std::vector<int32_t>& SubtreeOf(int32_t index, WorldBoxes& boxes) {
    KeepUpWithScene(boxes);
    std::vector<int32_t>& subtree = boxes.subtree;
    subtree.assign(1, index);
    ++boxes.visits;
    boxes.objects[index].lastVisit = boxes.visits;
    for (size_t i = 0; i < subtree.size(); ++i) {
        int32_t child = boxes.objects[subtree[i]].firstChild;
        for (; child >= 0; child = boxes.objects[child].nextSibling) {
            if (boxes.objects[child].lastVisit == boxes.visits) continue;  // a cycle of parents
            boxes.objects[child].lastVisit = boxes.visits;
            subtree.push_back(child);
        }
    }
    return subtree;
}

// Forgets the boxes that depend on the object: its own and all below it. The walk ends at an object that is
// not used, because nothing below it is used either. So moving all objects of a long chain one after another
// stays cheap: each box is forgotten once after each use.
void ObjectMoved(int32_t index, WorldBoxes& boxes) {
    if (boxes.objects.empty()) return;
    KeepUpWithScene(boxes);
    if (!boxes.objects[index].isUsed) return;
    std::vector<int32_t>& open = boxes.subtree;
    open.assign(1, index);
    Outdate(index, boxes);
    while (!open.empty()) {
        int32_t child = boxes.objects[open.back()].firstChild;
        open.pop_back();
        for (; child >= 0; child = boxes.objects[child].nextSibling) {
            ++boxes.steps;
            if (!boxes.objects[child].isUsed) continue;
            Outdate(child, boxes);
            open.push_back(child);
        }
    }
}

void ActiveChanged(int32_t index, WorldBoxes& boxes) {
    if (boxes.hasTree) MoveBox(InTree(index, boxes), boxes.solids);
}

int32_t NextSolid(const Box& box, int32_t after, int32_t except, WorldBoxes& boxes) {
    KeepUpWithScene(boxes);
    RefreshTree(except, boxes);
    return NextTouching(box, after, except, boxes.solids);
}

bool FindSolids(const Box& box, int32_t except, size_t most, WorldBoxes& boxes, std::vector<int32_t>& found) {
    KeepUpWithScene(boxes);
    RefreshTree(except, boxes);
    return FindTouching(box, except, most, boxes.solids, found);
}
