// The world boxes of all objects during one pass over the scene: each is computed once, and again after a
// move.
#pragma once

#include "play/box_tree.h"
#include "play/world_box.h"
#include "state/mesh.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

using MeshIdentities = std::vector<std::shared_ptr<const MeshMark>>;

struct CachedBox {
    Box box{};
    TurnedShape shape{};
    bool isFresh = false;      // `box` is the object's
    bool isUsed = false;       // something cached depends on where the object is; then all above are used too
    bool isStale = false;      // listed in WorldBoxes::stale
    int32_t firstChild = -1;   // children in no particular order
    int32_t nextSibling = -1;  // -1 ends the list
    uint32_t lastVisit = 0;    // number of the walk that came here last
};

// Valid for the open scene from its first use on, as long as every change is reported; only objects added at
// the end are noticed without a report. The answers are those of WorldBox, bit for bit.
struct WorldBoxes {
    std::vector<CachedBox> objects{};  // by object index
    WorldMatrices worlds{};
    BoxTree solids{};                   // boxes of the objects that others bump into
    bool hasTree = false;               // made, or brought up to date, when it is first asked for
    int32_t treeAge = 0;                // passes since it was made
    std::vector<int32_t> stale{};       // solid objects whose box in the tree may be out of date
    std::vector<int32_t> subtree{};     // what SubtreeOf returned last, or ObjectMoved walked through
    std::vector<int32_t> neighbours{};  // scratch of MoveWithCollision
    uint32_t visits = 0;
    int64_t steps = 0;            // objects visited to mark boxes as used and to forget them
    MeshIdentities meshes{};      // of the library, when the boxes were computed
    bool dependsOnCount = false;  // damaged parents: an added object may change older boxes
};

// Call it before a pass. Keeps from the pass before what is cheap to check again: turned shapes, and the
// structure of the tree.
void StartPass(WorldBoxes& boxes);

// True for an object that others bump into: active, with Collision, Shape and a mesh.
bool IsSolid(int32_t index);

Box WorldBox(int32_t index, WorldBoxes& boxes);

// The object and all below it. Valid until the next call, and until something moves.
const std::vector<int32_t>& SubtreeOf(int32_t index, WorldBoxes& boxes);

// Call these after an object's position, rotation or scale has changed, and after its `active` has.
void ObjectMoved(int32_t index, WorldBoxes& boxes);
void ActiveChanged(int32_t index, WorldBoxes& boxes);

// The first solid object behind `after` in scene order whose box touches `box`, but not `except`. -1 when
// there is none.
int32_t NextSolid(const Box& box, int32_t after, int32_t except, WorldBoxes& boxes);

// The solid objects whose boxes touch `box`, but not `except`, in scene order. False when there are more than
// `most`: `found` is then incomplete.
bool FindSolids(const Box& box, int32_t except, size_t most, WorldBoxes& boxes, std::vector<int32_t>& found);
