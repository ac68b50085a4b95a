#include "editor/inspector.h"

#include "base/numbers.h"
#include "editor/color_wheel.h"
#include "editor/component_search.h"
#include "editor/components.h"
#include "editor/fit_text.h"
#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "scene/interaction.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <array>

constexpr int32_t kFirstSectionTop = 162;
constexpr int32_t kMinContentWidth = 300;
constexpr int32_t kKeptForSearch = 114;  // the Add Component box and its results end above the panel's bottom

namespace {
// The column that the sections stand in.
struct Column {
    int32_t left = 0, right = 0;  // of the content, pixels
    int32_t bottom = 0;           // of the panel
    int32_t windowBottom = 0;     // nothing below is seen or clicked
};
}  // namespace

// The content keeps its least width in a narrower panel and is cut at the window's edge: a row never lays one
// part over another.
static Column ColumnOf(const EditorLayout& layout) {
    const int32_t left = layout.inspectorLeft + 10;
    const int32_t width = std::max(kMinContentWidth, layout.width - layout.inspectorLeft - 20);
    return {left, left + width, layout.bottomTop, layout.height};
}

// Whatever draws something that can be clicked registers it here, with the rectangle that it drew. A click
// looks up these zones instead of computing the layout a second time, so it always means what the user saw.
static void AddZone(const Rect& rect, int32_t action, int32_t block = 0) {
    if (action != 0) editorState.inspectorZones.push_back({rect, action, block});
}

// The strips above the sections.

// The box with the object's name, which a double click renames.
static Rect NameField(const Column& column) { return {column.left + 36, 93, column.left + 220, 114}; }

static Pixel ChipColor(const GameObject& object) {
    if (object.isEntity) return kEntityChip;
    if (object.isText) return kTextChip;
    return object.isLight ? kLightChip : kObjectChip;
}

static void DrawHeaderStrip(const Column& column, const GameObject& object) {
    const int32_t left = column.left;
    DrawPanelBox({left, 86, column.right, 122}, kStripFill, kInputEdge);
    FillRect({left + 10, 95, left + 26, 111}, ChipColor(object));
    const Rect field = NameField(column);
    const int32_t room = field.right - 2 - (left + 42);
    DrawPanelBox(field, kNameBoxFill, kInputEdge);
    DrawText(left + 42, 96, ShortenEnd(object.name, room, {14, kSemiBold}), kObjectNameText, 14, kSemiBold);
    DrawText(left + 226, 96, L"[ ] Static", kLabelText, 13, kNormal);
}

static void DrawTagStrip(const Column& column, const GameObject& object) {
    const int32_t left = column.left;
    DrawPanelBox({left, 124, column.right, 154}, kStripFill, kInputEdge);
    DrawText(left + 10, 131, L"Tag", kLabelText, 13, kNormal);
    DrawPanelBox({left + 42, 128, left + 140, 150}, kValueBoxFill, kInputEdge);
    DrawText(left + 48, 131, object.isEntity ? L"Entity" : L"Untagged", kValueText, 13, kNormal);
    DrawText(left + 154, 131, L"Layer", kLabelText, 13, kNormal);
    DrawPanelBox({left + 196, 128, left + 288, 150}, kValueBoxFill, kInputEdge);
    DrawText(left + 202, 131, L"Default", kValueText, 13, kNormal);
}

// Rows. A component's table says what a row holds; the type of the content picks how it is drawn and where it
// is clicked. A new kind of content does not compile until it is handled here.

namespace {
struct RowPainter {
    const GameObject& object;
    const InspectorRow& row;
    int32_t left = 0, top = 0;  // of the section

    int32_t Y() const { return top + row.y; }

    void DrawValue(const std::wstring& value) const {
        AddZone(DrawValueRow(left, Y(), row.label, value), row.action);
    }

    void operator()(Vec3 GameObject::*vector) const {
        const std::array<Rect, 3> boxes = DrawVectorRow(left, Y(), row.label, object.*vector);
        for (int32_t i = 0; i < 3 && row.action != 0; ++i) {
            AddZone(boxes[static_cast<size_t>(i)], row.action + i);
        }
    }
    void operator()(float GameObject::*number) const { DrawValue(Fixed(object.*number, 2)); }
    void operator()(std::wstring GameObject::*text) const { DrawValue(object.*text); }
    void operator()(std::wstring (*text)(const GameObject&)) const { DrawValue(text(object)); }
    void operator()(const wchar_t* text) const { DrawValue(text); }

    void operator()(const SliderContent& slider) const {
        AddZone(DrawSliderRow(left, Y(), row.label, slider.value(object)), row.action);
    }

    void operator()(const WheelContent& wheel) const {
        const Point centre{left + wheel.centre.x, top + wheel.centre.y};
        AddZone(DrawColorWheel(centre, wheel.radius, object.*wheel.color), row.action);
        // After the wheel: a large one reaches under a long label.
        DrawText(left + 10, Y(), row.label, kLabelText, 14, kNormal);
    }
};
}  // namespace

static void DrawRows(int32_t left, int32_t top, const SectionLook& look, const GameObject& object) {
    for (const InspectorRow& row : look.rows) std::visit(RowPainter{object, row, left, top}, row.content);
}

// Sections stand below one another, and a fold moves everything under it; so each returns the top of what
// follows.

static int32_t DrawSection(const Column& column, int32_t top, const Component& component,
                           const GameObject& object) {
    const int32_t left = column.left;
    const bool isOpen = IsOpen(component, object);
    const SectionLook& look = LookOf(component, object);
    const SectionMarks marks = DrawSectionHeader(left, top, column.right, look.title, isOpen, true);
    AddZone(marks.arrow, component.fold);
    AddZone(marks.remove, component.remove);
    if (!isOpen) return top + kClosedSectionHeight;
    DrawRows(left, top, look, object);
    return top + look.height;
}

static int32_t DrawScript(const Column& column, int32_t top, int32_t block, const GameObject& object) {
    const auto named = static_cast<int32_t>(object.scripts.size());
    const std::wstring title =
        block < named ? object.scripts[static_cast<size_t>(block)] : L"Custom Script " + Padded(block + 1, 2);
    const SectionLook& look = ScriptLook(title);
    const SectionMarks marks = DrawSectionHeader(column.left, top, column.right, title, true, true);
    AddZone(marks.remove, kRemoveScriptAction, block);
    DrawRows(column.left, top, look, object);
    return top + look.height;
}

// Also for scripts that are only counted. Their number may come from anywhere: those below the window stay
// away, with whatever follows them.
static int32_t DrawScripts(const Column& column, int32_t top, const GameObject& object) {
    const int32_t count = ScriptBlocks(object);
    for (int32_t i = 0; i < count && top < column.windowBottom; ++i) top = DrawScript(column, top, i, object);
    return top;
}

// Adding components.

static void DrawResult(const Rect& rect, const std::wstring& title) {
    DrawPanelBox(rect, kResultFill, kResultEdge);
    DrawText(rect.left + 12, rect.top + 5, title, kResultText, 13, kSemiBold);
}

static void DrawSearchBox(const Rect& rect) {
    const std::wstring& query = editorState.componentSearchText;
    const bool isOpen = editorState.componentSearchActive;
    DrawPanelBox(rect, kValueBoxFill, isOpen ? kAccent : kSearchEdge);
    if (query.empty()) {
        DrawText(rect.left + 10, rect.top + 6, L"Add Component...", kEmptySearchText, 13, kSemiBold);
    } else {
        DrawText(rect.left + 10, rect.top + 6, isOpen ? query + L"|" : query, kSearchText, 13, kSemiBold);
    }
    AddZone(rect, kOpenSearchAction);
}

// Below the last section, and at the panel's bottom when there is room to spare: the box stays where the hand
// expects it.
static void DrawSearch(const Column& column, int32_t sectionsEnd) {
    const int32_t left = column.left + 12, right = column.right - 12;
    int32_t top = std::max(sectionsEnd + 10, column.bottom - kKeptForSearch);
    DrawSearchBox({left, top, right, top + 28});
    top += 32;
    for (const ComponentCommand* found : SearchComponents(editorState.componentSearchText)) {
        const Rect rect{left, top, right, top + 24};
        DrawResult(rect, found->title);
        AddZone(rect, found->action);
        top += 28;
    }
}

static void DrawObject(const Column& column, const GameObject& object) {
    DrawHeaderStrip(column, object);
    DrawTagStrip(column, object);

    int32_t top = kFirstSectionTop;
    for (const Component* component : Components()) {
        if (!component->isPresent(object)) continue;
        top = DrawSection(column, top, *component, object);
        if (object.isEntity) break;  // coordinates are all that an Entity has
    }
    if (object.isEntity) {
        DrawText(column.left + 10, top + 12, L"Entity ma jen jmeno a souradnice.", kHintText, 14, kNormal);
        return;
    }
    top = DrawScripts(column, top, object);
    DrawSearch(column, top);
}

void DrawInspector(const EditorLayout& layout) {
    DrawText(layout.inspectorLeft + 20, 58, L"Inspector", kPanelTitle, 18, kSemiBold);
    editorState.inspectorZones.clear();
    editorState.inspectedObject = SelectionIsValid() ? editorState.selectedIndex : -1;
    if (SelectionIsValid()) DrawObject(ColumnOf(layout), SelectedObject());
}

// True while the object that the last frame drew is still there under its index and still selected.
static bool SelectionIsInspected() {
    return SelectionIsValid() && editorState.selectedIndex == editorState.inspectedObject;
}

bool IsOnNameField(Point pointer, const EditorLayout& layout) {
    return SelectionIsInspected() && Contains(layout.inspector, pointer) &&
           Contains(NameField(ColumnOf(layout)), pointer);
}

bool SearchBoxIsShown(const EditorLayout& layout) {
    return std::ranges::any_of(editorState.inspectorZones, [&layout](const HitZone& zone) {
        return zone.action == kOpenSearchAction && zone.rect.top < layout.inspector.bottom;
    });
}

// Acting.

namespace {
struct EffectRunner {
    GameObject& object;
    const ZonePress& press;

    void operator()(bool GameObject::*flag) const { object.*flag = !(object.*flag); }
    void operator()(void (*effect)(GameObject&, const ZonePress&)) const { effect(object, press); }
};
}  // namespace

// What an action says once it is done. Empty when it says nothing of its own.
static std::wstring MessageOf(const InspectorAction& action, const GameObject& object) {
    if (const auto* either = std::get_if<OnOffMessage>(&action.message)) {
        return object.*std::get<bool GameObject::*>(action.effect) ? either->on : either->off;
    }
    if (const auto* fixed = std::get_if<const wchar_t*>(&action.message)) return *fixed ? *fixed : L"";
    return std::get<std::wstring (*)(const GameObject&)>(action.message)(object);
}

static void ApplyAction(const InspectorAction& action, const ZonePress& press) {
    std::visit(EffectRunner{SelectedObject(), press}, action.effect);
    const std::wstring message = MessageOf(action, SelectedObject());
    if (!message.empty()) SetStatus(message);
}

// Undo step, effect, message: here, once for every action of every component. A fold takes no undo step and
// still counts as a change, because it is stored in the scene.
static void RunAction(const InspectorAction& action, const ZonePress& press) {
    if (action.undoLabel) {
        pushUndo(action.undoLabel);
    } else if (std::holds_alternative<bool GameObject::*>(action.effect)) {
        RaiseSceneVersion();
    }
    ApplyAction(action, press);
}

// The press has taken the undo step: the moves that follow belong to it.
static void StartValueDrag(const HitZone& zone) {
    if (!GestureIsUnderWay()) StartGesture(InspectorDrag{.zone = zone, .object = editorState.selectedIndex});
}

// Goes through the zones of the last frame, in the order in which they were drawn. The first one under the
// pointer that has an action takes the press, whether or not the action is still possible: a second click
// before the next frame must not fall through to what lies behind. Numbers without an action are passed over.
bool ClickInspector(Point pointer, const EditorLayout& layout) {
    if (!Contains(layout.inspector, pointer)) return false;
    if (!SelectionIsInspected()) return true;
    for (const HitZone& zone : editorState.inspectorZones) {
        const InspectorAction* action = FindInspectorAction(zone.action);
        if (action == nullptr || !Contains(zone.rect, pointer)) continue;
        const ZonePress press{pointer, zone};  // a copy: a dialog that the action opens may draw other zones
        if (IsPossible(*action, SelectedObject(), press)) {
            RunAction(*action, press);
            if (FollowsPointer(press.zone.action)) StartValueDrag(press.zone);
        }
        return true;
    }
    return true;
}

// Runs the action of the press again with the pointer's new place. The zone is the one of the press, so that
// a bar that has moved meanwhile does not jump under the hand.
void DragInspectorValue(const InspectorDrag& drag, Point pointer) {
    if (!SelectionIsValid() || editorState.selectedIndex != drag.object) return DropGesture();
    const InspectorAction* action = FindInspectorAction(drag.zone.action);
    if (action == nullptr) return;
    ApplyAction(*action, {pointer, drag.zone});
    MarkChanged();
}
