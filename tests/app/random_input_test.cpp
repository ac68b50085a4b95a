// A user who hits every key and every pixel at random, and what must be true after each of their doings.
#include "app/frame_view.h"
#include "platform/headless/fault_injection.h"
#include "play/play_update.h"
#include "render/gizmo.h"
#include "render/transform.h"
#include "scene/hierarchy.h"
#include "scene/name_entry.h"
#include "scene/same_object.h"
#include "scene/selection.h"
#include "scene/undo.h"
#include "support/editor_input.h"
#include "support/random_scene.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <string>
#include <utility>
#include <vector>

constexpr uint32_t kSeed = 20261121;
constexpr int32_t kEvents = 100000;
constexpr int32_t kEventsPerScene = 1000;
constexpr int32_t kEventsPerFrame = 50;  // about; only every so often is a picture drawn

// The law. Each function says what is wrong, or nothing.

static bool HasCycle(const Scene& scene) {
    // An object that no way leads to from a root hangs in a cycle, or below one.
    size_t reached = 0;
    std::vector<int32_t> open{-1};
    const ChildLists lists = BuildChildLists(scene);
    while (!open.empty()) {
        const int32_t parent = open.back();
        open.pop_back();
        for (const int32_t child : ChildrenOf(lists, parent)) {
            ++reached;
            open.push_back(child);
        }
    }
    return reached != scene.size();
}

static bool HasHalfPair(const std::wstring& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        const auto unit = static_cast<uint32_t>(text[i]);
        if (unit >= 0xDC00 && unit < 0xE000) return true;
        if (unit < 0xD800 || unit >= 0xDC00) continue;
        const auto next = i + 1 < text.size() ? static_cast<uint32_t>(text[i + 1]) : 0;
        if (next < 0xDC00 || next >= 0xE000) return true;
        ++i;
    }
    return false;
}

static const char* FaultInScene() {
    const Scene& scene = editorState.scene;
    for (const GameObject& object : scene) {
        if (object.parentIndex != -1 && !IsObjectIndex(object.parentIndex)) return "a parent is not there";
        if (HasHalfPair(object.name) || HasHalfPair(object.text)) return "half a pair in an object";
        if (std::isnan(object.position.x + object.position.y + object.position.z))
            return "a position is lost";
    }
    if (HasCycle(scene)) return "a cycle of parents";
    if (editorState.selectedIndex != -1 && !SelectionIsValid()) return "the selection is not there";
    return nullptr;
}

static const char* FaultInHistory() {
    if (editorState.undoScenes.size() != editorState.undoSelections.size()) return "a step without selection";
    if (editorState.undoScenes.size() > 64) return "more than 64 steps";
    return nullptr;
}

// `longestName` is 80, or as much as the open entry began with.
static const char* FaultInEntries(size_t longestName) {
    const int32_t open = NameEntryIsOpen() + editorState.numberEntry.open + editorState.componentSearchActive;
    if (open > 1) return "two entries are open";
    if (editorState.nameEntry.text.size() > longestName) return "a name is too long";
    if (editorState.numberEntry.text.size() > 44) return "a number is too long";  // the longest float shown
    if (editorState.componentSearchText.size() > 40) return "a search is too long";
    if (HasHalfPair(editorState.nameEntry.text)) return "half a pair in a name";
    if (HasHalfPair(editorState.componentSearchText)) return "half a pair in a search";
    return nullptr;
}

static const char* FaultInPanels() {
    const auto [hierarchy, inspector, bottom] = editorState.panels;
    if (hierarchy != 0 && hierarchy < 170) return "the Hierarchy is too narrow";
    if (inspector != 0 && inspector < 320) return "the Inspector is too narrow";
    if (bottom < 96) return "the bottom panel is too low";
    return nullptr;
}

static const char* FaultInGestures() {
    const bool looks = editorState.mouseLook.armed;
    const int32_t drags = (editorState.panelResize.edge != 0) + (editorState.gizmoDrag.axis != 0) +
                          editorState.hierarchyDrag.pressed + editorState.filesDrag.pressed +
                          editorState.blueprintDrag.dragging + looks;
    if (drags > 1) return "two drags at once";
    if ((drags == 1) != headless.mouseIsCaptured) return "the mouse is held without a drag, or not in one";
    const PopupMenu* const menus[] = {&editorState.createMenu,      &editorState.objectMenu,
                                      &editorState.filesCreateMenu, &editorState.filesItemMenu,
                                      &editorState.projectMenu,     &editorState.addNodeMenu};
    if (std::ranges::count_if(menus, &PopupMenu::open) > 1) return "two menus are open";
    return nullptr;
}

// Undoes the step that an event has added, compares, and puts everything back.
static bool UndoRestores(const Scene& before) {
    std::vector<Mesh> meshes = std::exchange(editorState.meshes, {});  // large, and none of undo's business
    EditorState after = editorState;
    const bool wasCaptured = headless.mouseIsCaptured;
    undo();
    const bool isRestored = std::ranges::equal(editorState.scene, before, SameBits);
    editorState = std::move(after);
    editorState.meshes = std::move(meshes);
    headless.mouseIsCaptured = wasCaptured;
    return isRestored;
}

// What the user does.

namespace {

struct RandomUser {
    RandomSource random{kSeed};
    std::deque<InputEvent> plan{};

    bool Sometimes(uint32_t oneIn) { return random.OneIn(oneIn); }
    template <typename T, size_t N>
    T OneOf(const T (&list)[N]) {
        return list[random.IntBetween(0, static_cast<int32_t>(N) - 1)];
    }

    Point Anywhere() {
        const auto [width, height] = headless.clientSize;
        return {random.IntBetween(-20, width + 20), random.IntBetween(-20, height + 20)};
    }

    Point NearSomething() {
        const Point off{random.IntBetween(-12, 12), random.IntBetween(-12, 12)};
        const EditorLayout layout = CurrentLayout();
        Point at = Anywhere();
        switch (random.IntBetween(0, 8)) {
            case 0: at.x = layout.hierarchy.right + off.x; break;
            case 1: at.x = layout.inspectorLeft + off.x; break;
            case 2: at.y = layout.bottomTop + off.y; break;
            case 3: at = {random.IntBetween(0, 120), 92 + 28 * random.IntBetween(0, 8) + off.y}; break;
            case 4:
                at = {layout.inspectorLeft + 60 + off.x, 103 + off.y};  // the name
                break;
            case 5:
            case 6:
                if (!editorState.inspectorZones.empty()) {
                    const auto last = static_cast<int32_t>(editorState.inspectorZones.size()) - 1;
                    const Rect& zone = editorState.inspectorZones[random.IntBetween(0, last)].rect;
                    at = {random.IntBetween(zone.left, zone.right), random.IntBetween(zone.top, zone.bottom)};
                }
                break;
            case 7:
                at = {layout.viewport.left + off.x + 60, layout.viewport.top + 28 * random.IntBetween(0, 5)};
                break;
            default:
                if (SelectionIsValid()) {
                    const GizmoOnScreen gizmo =
                        ProjectGizmo(WorldPosition(editorState.scene, editorState.selectedIndex),
                                     CurrentView(layout.viewport).viewProjection, layout.viewport);
                    const Point tip = gizmo.tip[random.IntBetween(0, 2)];
                    at = {tip.x + off.x, tip.y + off.y};
                }
        }
        const PopupMenu& menu = editorState.createMenu.open ? editorState.createMenu : editorState.objectMenu;
        if (menu.open && !Sometimes(4)) {
            at = {menu.corner.x + random.IntBetween(-5, 190), menu.corner.y + random.IntBetween(-5, 210)};
        }
        return at;
    }

    Point SomePoint() {
        if (Sometimes(6)) return Anywhere();
        if (Sometimes(3)) return editorState.pointer;
        return NearSomething();
    }

    uint32_t SomeKey() {
        constexpr uint32_t kKeys[] = {
            'Z',    'Z',    'C',       'V',       'D',           'G',        'P',        'W',        'A',
            '1',    '3',    '6',       '9',       kKeyTab,       kKeyDelete, kKeyDelete, kKeyDelete, kKeyF1,
            kKeyF2, kKeyF3, kKeyEnter, kKeyEnter, kKeyBackspace, kKeySpace,  kKeyLeft,   kKeyShift};
        if (Sometimes(12)) {
            const auto key = static_cast<uint32_t>(random.IntBetween(0, 300));
            return key == kKeyEscape ? 0 : key;
        }
        return OneOf(kKeys);
    }

    void PressKey() {
        const bool isEntryOpen =
            NameEntryIsOpen() || editorState.numberEntry.open || editorState.componentSearchActive;
        headless.controlIsHeld = Sometimes(3);
        headless.shiftIsHeld = Sometimes(5);
        // Escape ends the program where no entry takes it.
        const uint32_t key = isEntryOpen && Sometimes(4)   ? kKeyEnter
                             : isEntryOpen && Sometimes(6) ? kKeyEscape
                                                           : SomeKey();
        HandleInput({.kind = InputKind::KeyDown, .key = key, .isRepeat = key != kKeyEscape && Sometimes(8)});
        headless.controlIsHeld = false;
    }

    void TypeCharacter() {
        constexpr wchar_t kCharacters[] = {L'a', L'Z',   L' ',   L'\t',  127,   L'\u017e', L'\u20ac',
                                           L'0', L'7',   L'9',   L'-',   L'+',  L'.',      L',',
                                           L'e', 0xD83D, 0xD83D, 0xDE00, 0xDE00};
        const wchar_t character = OneOf(kCharacters);
        const int32_t times = Sometimes(30) ? 90 : 1;
        for (int32_t i = 0; i < times; ++i) {
            HandleInput({.kind = InputKind::Character, .character = character});
        }
    }

    void Plan(InputKind kind, Point at) { plan.push_back({.kind = kind, .x = at.x, .y = at.y}); }

    // The events of a whole gesture, which others may come between.
    void PlanGesture() {
        const Point at = SomePoint();
        const Point to = Sometimes(2) ? NearSomething() : Point{at.x + random.IntBetween(-40, 40), at.y + 30};
        const int32_t what = random.IntBetween(0, 6);
        if (what == 0) {
            Plan(InputKind::RightDown, at);
            Plan(InputKind::RightUp, at);
            return;
        }
        Plan(InputKind::LeftDown, at);
        if (what < 3) {
            Plan(InputKind::MouseMove, {(at.x + to.x) / 2, (at.y + to.y) / 2});
            Plan(InputKind::MouseMove, to);
            Plan(InputKind::LeftUp, to);
            return;
        }
        Plan(InputKind::LeftUp, at);
        if (what > 3) return;
        Plan(InputKind::LeftDoubleClick, at);
        Plan(InputKind::LeftUp, at);
    }

    void UseMouse() {
        constexpr InputKind kKinds[] = {
            InputKind::MouseMove,       InputKind::LeftDown,  InputKind::LeftUp,  InputKind::LeftUp,
            InputKind::LeftDoubleClick, InputKind::RightDown, InputKind::RightUp, InputKind::RightUp};
        if (Sometimes(6)) return SendMouse(OneOf(kKinds), SomePoint());
        if (plan.empty()) PlanGesture();
        const InputEvent event = plan.front();
        plan.pop_front();
        HandleInput(event);
    }

    void ResizeWindow() {
        const bool isTiny = Sometimes(4);
        headless.clientSize = {random.IntBetween(isTiny ? 0 : 560, isTiny ? 300 : 900),
                               random.IntBetween(isTiny ? 0 : 500, isTiny ? 200 : 900)};
    }

    void DoSomething() {
        const int32_t what = random.IntBetween(0, 99);
        if (what < 62) return UseMouse();
        if (what < 82) return PressKey();
        if (what < 86) return HandleInput({.kind = InputKind::KeyUp, .key = SomeKey()});
        if (what < 95) return TypeCharacter();
        if (what < 96) return ResizeWindow();
        if (what < 97) return LoseMouse();
        if (what < 98) return LoseFocus();
        UpdatePlay(random.Between(0, 0.05f));
    }
};

}  // namespace

static void StartAnew(RandomUser& user) {
    editorState = EditorState{};
    headless.mouseIsCaptured = false;
    resetScene(user.Sometimes(2));
    if (!user.Sometimes(3)) return;
    editorState.screen = Screen::PrefabEditor;
    editorState.prefabSnapshot.scene = editorState.scene;
}

TEST_CASE(
    "whatever is pressed, typed and clicked, the editor stays whole and one undo takes back one change") {
    CAPTURE(kSeed);
    const ScratchFolder folder;  // for whatever the user saves or creates
    folderAnswers.workingFolder = folder.path;
    folderAnswers.localDataFolder = folder / L"data";
    StartEditor(700, 400);
    RandomUser user;
    size_t longestName = 80;
    int32_t undone = 0;
    for (int32_t event = 0; event < kEvents; ++event) {
        CAPTURE(event);
        if (event % kEventsPerScene == 0) StartAnew(user);
        if (user.Sometimes(kEventsPerFrame)) RenderFrame();
        // A full history takes a step without growing; half of the time it gets room to show it.
        if (editorState.undoScenes.size() == 64 && user.Sometimes(2)) ClearUndo();

        const Scene before = editorState.scene;
        const size_t steps = editorState.undoScenes.size();
        const bool wasNaming = NameEntryIsOpen();
        const bool wasPlaying = editorState.playMode;
        user.DoSomething();

        if (NameEntryIsOpen() && !wasNaming)
            longestName = std::max<size_t>(80, editorState.nameEntry.text.size());
        for (const char* fault : {FaultInScene(), FaultInHistory(), FaultInEntries(longestName),
                                  FaultInPanels(), FaultInGestures()}) {
            REQUIRE_MESSAGE(fault == nullptr, std::string(fault == nullptr ? "" : fault));
        }
        REQUIRE_FALSE(headless.quitRequested);
        if (wasPlaying && !editorState.playMode) continue;  // the history of before the game is back
        REQUIRE(editorState.undoScenes.size() <= steps + 1);
        if (editorState.undoScenes.size() <= steps) continue;
        REQUIRE(UndoRestores(before));
        ++undone;
    }
    MESSAGE("seed ", kSeed, ": ", undone, " steps of the history taken and undone");
    CHECK(undone > 1000);
}
