#include "app/files_drop.h"

#include "base/path_text.h"
#include "editor/drop_assignments.h"
#include "editor/hierarchy.h"
#include "formats/obj_file.h"
#include "formats/prefab.h"
#include "scene/commands.h"
#include "state/editor_state.h"
#include "viewport/pick.h"
#include "viewport/scene_view.h"

namespace {

struct FileDrop {
    bool inHierarchy = false;
    bool inInspector = false;
    int32_t target = -1;  // object there, -1 none
};

}  // namespace

// Where the pointer let go, and which object is there. The order is that of the panels from left to right;
// the viewport is what remains, and asks which object it draws under the pointer.
static FileDrop PlaceAt(Point pointer, const EditorLayout& layout) {
    if (Contains(layout.hierarchy, pointer)) {
        return {.inHierarchy = true, .target = HierarchyObjectAt(pointer, layout)};
    }
    if (IsInInspectorBand(pointer, layout)) {
        return {.inInspector = true, .target = editorState.selectedIndex};
    }
    return {.target = PickObject(CurrentPickView(layout.viewport), pointer)};
}

static void PlaceModel(const AssetEntry& entry, const FileDrop& place) {
    const int32_t mesh = LoadObjIntoLibrary(entry.path);
    if (mesh < 0) return;
    addModelObject(mesh, NameWithoutExtension(entry.name), place.inHierarchy ? place.target : -1);
}

static void PlacePrefab(const AssetEntry& entry, const FileDrop& place) {
    if (place.inInspector && AssignPrefab(entry, place.target)) return;
    InstantiatePrefab(entry.path, place.inHierarchy ? place.target : -1);
}

// A model or prefab that is let go over the bottom panel or the top bar is not placed.
static bool IsOutsideScene(Point pointer, const EditorLayout& layout) {
    return Contains(layout.bottom, pointer) || Contains(layout.topBar, pointer);
}

void ReleaseFilesItem(const FilesDrag& drag, Point pointer, const EditorLayout& layout) {
    const auto source = static_cast<size_t>(drag.source);
    if (!drag.dragging || source >= editorState.fileEntries.size()) return;

    const AssetEntry entry = editorState.fileEntries[source];
    const FileDrop place = PlaceAt(pointer, layout);
    switch (entry.kind) {
        case AssetKind::Model:
            if (!IsOutsideScene(pointer, layout)) PlaceModel(entry, place);
            break;
        case AssetKind::Prefab:
            if (!IsOutsideScene(pointer, layout)) PlacePrefab(entry, place);
            break;
        case AssetKind::Script: AssignScript(entry, place.target); break;
        case AssetKind::Image: AssignTexture(entry, place.target); break;
        default: break;
    }
}
