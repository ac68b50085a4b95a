#include "editor/hierarchy.h"

#include "editor/popup_menu.h"
#include "editor/theme.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/commands.h"
#include "scene/interaction.h"
#include "scene/object_tree.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>
#include <vector>

constexpr int32_t kFirstRow = 92, kRowPitch = 28;  // pixels
constexpr int32_t kRowAbove = 4, kRowBelow = 22;   // what a row covers around its y
constexpr int32_t kIndent = 18;                    // per level
constexpr int32_t kDropLineWidth = 2;
constexpr int32_t kCentreBegin = 3, kCentreEnd = 16;  // the band of a row that means "as a child"
constexpr int32_t kCentre = 9;                        // below it the drop is behind the target
constexpr int32_t kChildMargin = 52;                  // right of it the whole row means "as a child"
constexpr int32_t kDragThreshold = 6;                 // |dx| + |dy| in pixels

// Makes a row for every object that can be reached from a root, parents before their children. The walk goes
// down to the first child if there is one, else across to the next sibling, else back up to the sibling that
// was left waiting; the number of those waiting is the depth. An object in a cycle of parents is never
// reached.
HierarchyRowList ListHierarchyRows(const Scene& scene, bool isPlaying) {
    const ObjectTree tree = BuildObjectTree(scene);
    HierarchyRowList rows;
    rows.reserve(scene.size());

    // On a list and not on the call stack: a chain of parents may be as long as the scene.
    std::vector<int32_t> later;  // the siblings to go on with on the way back, by depth
    for (int32_t object = FirstChild(tree, -1); object >= 0;) {
        const auto index = static_cast<size_t>(object);
        const bool isListed = !isPlaying || scene[index].active;
        if (isListed) {
            const auto depth = static_cast<int32_t>(later.size());
            rows.push_back({object, depth, kFirstRow + kRowPitch * static_cast<int32_t>(rows.size())});
        }
        const int32_t child = isListed ? FirstChild(tree, object) : -1;
        if (child >= 0) later.push_back(tree.nextSibling[index]);
        object = child >= 0 ? child : tree.nextSibling[index];
        while (object < 0 && !later.empty()) {
            object = later.back();
            later.pop_back();
        }
    }
    return rows;
}

static CanvasImage IconOf(const GameObject& object) {
    if (object.isCamera) return icons.camera;
    if (object.isEntity) return icons.entity;
    if (object.isLight) return icons.light;
    return -1;
}

static void DrawDropMarker(const DropPlace& drop, const Rect& bar, int32_t indent) {
    if (drop.asChild) return FillRect(bar, kDropChildFill);
    const int32_t y = drop.after ? bar.bottom : bar.top;
    FillRect({indent + 14, y, bar.right, y + kDropLineWidth}, kDropLine);
}

// The sign before the name: an icon, or a badge for a text. False without one.
static bool DrawSign(const GameObject& object, int32_t x, int32_t y) {
    const Rect place{x, y - 2, x + 18, y + 16};
    if (object.isText) {
        FillRect(place, kTextBadgeFill);
        DrawText(x + 5, y - 2, L"T", kBadgeText, 16, kSemiBold);
        return true;
    }
    const CanvasImage icon = IconOf(object);
    DrawImage(icon, place);
    return icon >= 0;
}

static void DrawRow(const HierarchyRow& row, const EditorLayout& layout) {
    const GameObject& object = editorState.scene[static_cast<size_t>(row.objectIndex)];
    const auto* drag = std::get_if<HierarchyDrag>(&editorState.gesture);
    const bool selected = row.objectIndex == editorState.selectedIndex;
    const int32_t indent = kIndent * row.depth, y = row.y;
    const Rect bar{10, y - kRowAbove, std::max(46, layout.hierarchy.right - 10), y + kRowBelow};

    if (drag && drag->drop && row.objectIndex == drag->drop->target) DrawDropMarker(*drag->drop, bar, indent);
    if (selected) {
        FillRect(bar, kSelectedRowFill);
        FillRect({bar.left, bar.top, bar.left + 3, bar.bottom}, kAccent);
    }
    const bool hasSign = DrawSign(object, indent + 20, y);
    DrawText(indent + (hasSign ? 44 : 20), y, object.name, selected ? kSelectedRowText : kRowText, 15,
             kNormal);
}

void DrawHierarchy(const EditorLayout& layout) {
    DrawText(16, 58, L"Hierarchy", kPanelTitle, 18, kSemiBold);
    editorState.hierarchyRows = ListHierarchyRows(editorState.scene, editorState.playMode);
    for (const HierarchyRow& row : editorState.hierarchyRows) {
        if (row.y - kRowAbove >= layout.height) return;
        DrawRow(row, layout);
    }
}

// Rows lie below one another, so a binary search finds the row: a scene of 100,000 objects is asked as fast
// as one of ten. Two pixels between two rows belong to neither.
const HierarchyRow* HierarchyRowAt(int32_t y) {
    const HierarchyRowList& rows = editorState.hierarchyRows;
    const auto row = std::ranges::partition_point(
        rows, [y](const HierarchyRow& above) { return above.y + kRowBelow <= y; });
    if (row == rows.end() || y < row->y - kRowAbove) return nullptr;
    return &*row;
}

bool HierarchyReachesBelow(int32_t y) {
    const HierarchyRowList& rows = editorState.hierarchyRows;
    return !rows.empty() && rows.back().y + kRowBelow + kDropLineWidth > y;  // a drop is marked below its row
}

int32_t HierarchyObjectAt(Point point, const EditorLayout& layout) {
    if (!Contains(layout.hierarchy, point)) return -1;
    const HierarchyRow* row = HierarchyRowAt(point.y);
    return row && IsObjectIndex(row->objectIndex) ? row->objectIndex : -1;
}

// The middle of a row means "as a child", its upper and lower edge "before" and "behind"; so does everything
// right of the indent, where there is no edge to aim at. An object never lands in its own subtree.
std::optional<DropPlace> HierarchyDropAt(Point point, int32_t dragged) {
    const HierarchyRow* row = HierarchyRowAt(point.y);
    if (!row || !IsObjectIndex(row->objectIndex)) return std::nullopt;
    if (IsInSubtree(editorState.scene, row->objectIndex, dragged)) return std::nullopt;
    const int32_t y = point.y - row->y;
    const bool inCentre = y >= kCentreBegin && y < kCentreEnd;
    const bool rightOfMargin = point.x >= kIndent * row->depth + kChildMargin;
    return DropPlace{.target = row->objectIndex, .asChild = inCentre || rightOfMargin, .after = y > kCentre};
}

bool PressHierarchy(Point pointer, const EditorLayout& layout) {
    if (!Contains(layout.hierarchy, pointer)) return false;
    const int32_t object = HierarchyObjectAt(pointer, layout);
    if (object < 0 || GestureIsUnderWay()) return true;

    StartGesture(HierarchyDrag{.source = object, .press = pointer});
    SetStatus(L"Hierarchy: pust mys pro vyber, nebo tahni pro presun.");
    return true;
}

// A press becomes a drag only after a few pixels, so that a click with an unsteady hand still selects.
void DragInHierarchy(HierarchyDrag& drag, Point pointer) {
    if (!drag.dragging) {
        const Point press = drag.press;
        if (std::abs(pointer.x - press.x) + std::abs(pointer.y - press.y) < kDragThreshold) return;
        drag.dragging = true;
        CloseMenu();
        SetStatus(L"Tahni v Hierarchy: stred radku udela potomka, horni/spodni okraj meni poradi.");
    }
    drag.drop = HierarchyDropAt(pointer, drag.source);
}

void ReleaseHierarchy(const HierarchyDrag& drag) {
    if (drag.dragging) {
        if (drag.drop) moveInHierarchy(drag.source, drag.drop->target, drag.drop->asChild, drag.drop->after);
    } else if (IsObjectIndex(drag.source)) {
        editorState.selectedIndex = drag.source;
        SetStatus(L"Objekt vybran v Hierarchy.");
    }
}
