// A user who hits every key and every pixel as a source of numbers says.
#pragma once

#include "app/current_layout.h"
#include "scene/name_entry.h"
#include "scene/selection.h"
#include "scene/transform.h"
#include "support/editor_input.h"
#include "support/frame_update.h"
#include "support/open_menu.h"
#include "viewport/gizmo.h"
#include "viewport/scene_view.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

// `Source` answers OneIn, IntBetween and Between as RandomSource does.
template <typename Source>
struct RandomUser {
    Source random;
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
                    const ScreenCorner& corner = gizmo.tip[random.IntBetween(0, 2)];
                    const Point tip{static_cast<int32_t>(corner.x), static_cast<int32_t>(corner.y)};
                    at = {tip.x + off.x, tip.y + off.y};
                }
        }
        const bool menuIsOpen = MenuIsOpen(MenuKind::Create) || MenuIsOpen(MenuKind::Object);
        if (menuIsOpen && !Sometimes(4)) {
            const Point corner = editorState.menu->corner;
            at = {corner.x + random.IntBetween(-5, 190), corner.y + random.IntBetween(-5, 210)};
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

    bool hasLetTimePass = false;  // and something moved by it

    void DoSomething() {
        const int32_t what = random.IntBetween(0, 99);
        if (what < 62) return UseMouse();
        if (what < 82) return PressKey();
        if (what < 86) return HandleInput({.kind = InputKind::KeyUp, .key = SomeKey()});
        if (what < 95) return TypeCharacter();
        if (what < 96) return ResizeWindow();
        if (what < 97) return LoseMouse();
        if (what < 98) return LoseFocus();
        hasLetTimePass = UpdateFrame(random.Between(0, 0.05f)) || hasLetTimePass;
    }
};
