#include "scene/commands.h"

#include "base/numbers.h"
#include "render/builtin_meshes.h"
#include "scene/editor_camera.h"
#include "scene/interaction.h"
#include "scene/object_tree.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/transform.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <numeric>
#include <utility>

constexpr int32_t kProtectedObjects = 2;  // camera and light, which always stand first

constexpr float kModelDistance = 4.0f;        // world units before the camera
constexpr float kDuplicateOffset = 0.6f;      // world units along x and z
constexpr Vec3 kBesideParent{0.7f, 0, 0.7f};  // local position of a new child

namespace {
struct AddCommand {
    const char* undoLabel;
    const wchar_t* name;              // before the number
    GameObject (*make)(float count);  // from the number of objects before
    const wchar_t* message;
};
}  // namespace

static GameObject MakeCube(float count) {
    return {.position{0, 0, 3.0f + 0.4f * count}, .scale{0.75f, 0.75f, 0.75f}, .meshIndex = kCubeMesh};
}

static GameObject MakeEntity(float count) {
    return {.position{-1.0f, 0, 3.0f + 0.35f * count}, .isEntity = true};
}

static GameObject MakeCamera(float) { return {.position = InFrontOfEditorCamera(4.0f), .isCamera = true}; }

static GameObject MakeLight(float) {
    return {.position = InFrontOfEditorCamera(3.5f), .rotation{-0.7f, 0.4f, 0}, .isLight = true};
}

static GameObject MakePlane(float) {
    return {.position = InFrontOfEditorCamera(4.0f), .scale{2.0f, 1.0f, 2.0f}, .meshIndex = kPlaneMesh};
}

static GameObject MakeText(float) {
    return {.position = InFrontOfEditorCamera(3.5f), .hasShape = false, .isText = true};
}

static GameObject MakeChild(float) {
    return {.position = kBesideParent, .scale{0.55f, 0.55f, 0.55f}, .meshIndex = kCubeMesh};
}

static void Add(const AddCommand& command, int32_t parent = -1) {
    pushUndo(command.undoLabel);

    const auto count = static_cast<int32_t>(editorState.scene.size());
    GameObject object = command.make(static_cast<float>(count));
    object.name = command.name + Padded(count, 2);
    object.parentIndex = parent;
    AppendAndSelect(std::move(object));

    SetStatus(command.message);
}

constexpr AddCommand kCube{"Add cube", L"GameObject_", MakeCube,
                           L"Pridan novy GameObject s Cube mesh rendererem."};
constexpr AddCommand kEntity{"Add entity", L"Entity_", MakeEntity, L"Pridana Entity jako bodovy marker."};
constexpr AddCommand kCamera{"Add camera", L"Camera_", MakeCamera, L"Pridan kamerovy objekt do Hierarchy."};
constexpr AddCommand kLight{"Add light", L"Light_", MakeLight,
                            L"Pridan Light objekt: funguje jako slunce pro scenu."};
constexpr AddCommand kPlane{"Add plane", L"Plane_", MakePlane, L"Pridan Plane objekt."};
constexpr AddCommand kText{"Add text", L"Text_", MakeText,
                           L"Pridan Text objekt. V Inspectoru upravis vlastnost Text."};
constexpr AddCommand kChild{"Add child", L"Child_", MakeChild,
                            L"Pridan child object s lokalni pozici pod vybrany objekt."};

void addCube() { Add(kCube); }
void addEntity() { Add(kEntity); }
void addCamera() { Add(kCamera); }
void addLight() { Add(kLight); }
void addPlane() { Add(kPlane); }
void addText() { Add(kText); }

void addChild(int32_t parent) {
    if (!IsObjectIndex(parent)) return addCube();
    Add(kChild, parent);
}

void addModelObject(int32_t meshIndex, const std::wstring& name, int32_t parent) {
    pushUndo("Add model object");

    const bool hasParent = IsObjectIndex(parent);
    AppendAndSelect({.name = name,
                     .position = hasParent ? kBesideParent : InFrontOfEditorCamera(kModelDistance),
                     .meshIndex = meshIndex,
                     .parentIndex = hasParent ? parent : -1});

    SetStatus(L"OBJ model pridan jako objekt se Shape mesh: " + name);
}

void duplicateSelected() {
    if (!SelectionIsValid()) return;
    pushUndo("Duplicate object");

    GameObject copy = SelectedObject();
    copy.name += L"_Copy";
    copy.position.x += kDuplicateOffset;
    copy.position.z += kDuplicateOffset;
    AppendAndSelect(std::move(copy));

    SetStatus(L"Objekt byl duplikovan.");
}

static bool SelectionIsProtected() {
    return editorState.screen != Screen::PrefabEditor && editorState.selectedIndex < kProtectedObjects;
}

// Takes the marked objects out and keeps every parent index naming the same object. One walk moves what stays
// to the front and notes its new index; a second one renames the parents. Taking objects out one by one would
// move the rest of the scene for each.
static void RemoveObjects(const std::vector<bool>& isRemoved, Scene& scene) {
    std::vector<int32_t> newIndices(scene.size(), -1);
    size_t kept = 0;
    for (size_t i = 0; i < scene.size(); ++i) {
        if (isRemoved[i]) continue;
        newIndices[i] = static_cast<int32_t>(kept);
        if (kept != i) scene[kept] = std::move(scene[i]);
        ++kept;
    }
    scene.resize(kept);
    RenumberParents(newIndices, scene);
}

void deleteSelected() {
    if (!SelectionIsValid()) return;
    if (SelectionIsProtected()) {
        SetStatus(L"Game Camera a Directional Light jsou chranene editorove objekty.");
        return;
    }
    pushUndo("Delete object");
    ForgetObjectIndices();

    Scene& scene = editorState.scene;
    RemoveObjects(MarkSubtree(scene, editorState.selectedIndex), scene);
    const auto last = static_cast<int32_t>(scene.size()) - 1;
    editorState.selectedIndex = std::min(editorState.selectedIndex, last);

    SetStatus(L"Vybrany objekt byl smazan.");
}

// Takes the object at `from` out and puts it in again at `to`. Every parent index names the same object as
// before: a list of the old indices makes the same move, and turned round it tells each object's new index.
static void MoveObject(int32_t from, int32_t to, Scene& scene) {
    std::vector<int32_t> oldIndices(scene.size());
    std::iota(oldIndices.begin(), oldIndices.end(), 0);
    const auto move = [&](auto begin) {
        if (from < to) {
            std::rotate(begin + from, begin + from + 1, begin + to + 1);
        } else {
            std::rotate(begin + to, begin + from, begin + from + 1);
        }
    };
    move(scene.begin());
    move(oldIndices.begin());

    std::vector<int32_t> newIndices(scene.size());
    for (size_t i = 0; i < scene.size(); ++i) newIndices[oldIndices[i]] = static_cast<int32_t>(i);
    RenumberParents(newIndices, scene);
}

// The object stays where it is in the world: its place is worked out under its new parent before anything
// moves. Behind a target means directly behind it, in front of its children in the list; the Hierarchy shows
// the same, because it lists children under their parents whatever their indices are.
void moveInHierarchy(int32_t dragged, int32_t target, bool dropAsChild, bool dropAfter) {
    if (!IsObjectIndex(dragged) || !IsObjectIndex(target)) return;
    Scene& scene = editorState.scene;
    if (IsInSubtree(scene, target, dragged)) return;
    pushUndo("Reorder hierarchy");
    ForgetObjectIndices();

    GameObject& object = scene[dragged];
    const int32_t parent = dropAsChild ? target : scene[target].parentIndex;
    object.position = LocalPositionUnder(scene, parent, WorldPosition(scene, dragged));
    object.parentIndex = parent;

    int32_t place = dropAsChild || dropAfter ? target + 1 : target;
    if (dragged < place) --place;
    MoveObject(dragged, place, scene);
    editorState.selectedIndex = place;

    SetStatus(dropAsChild ? L"Objekt byl presunut jako potomek v Hierarchy."
                          : L"Objekt byl presunut v Hierarchy.");
}
