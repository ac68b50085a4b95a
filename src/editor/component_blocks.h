// The blocks of all components, one source per subject, and what is checked of each while it compiles. Only
// those sources and the lists in components.cpp need this.
#pragma once

#include "editor/components.h"
#include "editor/widgets.h"
#include "formats/project_file.h"

#include <algorithm>

using SeenObject = const GameObject&;
using Edited = GameObject&;
using Press = const ZonePress&;

// basic_components.cpp
extern const Component kTransformBlock, kTextBlock, kCameraBlock;
// shape_components.cpp
extern const Component kShapeBlock, kColorBlock, kAnimationBlock, kTextureBlock;
// physics_components.cpp
extern const Component kCollisionBlock, kGravitationBlock, kRigidbodyBlock;

// script_components.cpp
extern const ScriptBlock kCustomScriptBlock, kCollectorBlock, kSpawnerBlock;
extern const InspectorAction kRemoveScript;

// The question of a component that is there while a flag is set.
template <bool GameObject::*flag>
constexpr bool Has(const GameObject& object) {
    return object.*flag;
}

// The two colour wheels that sections show: a small one beside its label, a large one under it.
constexpr Point kSmallWheelCentre{150, 56}, kLargeWheelCentre{94, 86};
constexpr int32_t kSmallWheel = 22;  // radius, pixels

// What a press on a bar sets, 0 .. 1.
inline float FractionOf(Press press) { return BarFraction(press.pointer.x, press.zone.rect); }

// A path inside the project as the path bar shows folders, "Files\\Coin.prefab", with its middle left out
// where it is too long for a row.
inline std::wstring ShownPath(const std::wstring& path) { return ValueRowPath(MakeProjectRelative(path)); }

// Up by a step; beyond `last` it starts again at `first`. Sums of 0.05 miss 0.5 by a rounding error, which is
// less than a scene file stores.
constexpr float NextStep(float value, float step, float last, float first) {
    constexpr float kRoundingError = 0.0000005f;
    const float next = value + step;
    return next > last + kRoundingError ? first : std::min(next, last);
}

constexpr const InspectorAction* FindIn(std::span<const InspectorAction> actions, int32_t number) {
    for (const InspectorAction& action : actions) {
        if (number >= action.number && number < action.number + action.count) return &action;
    }
    return nullptr;
}

constexpr bool RowsHaveTheirActions(const SectionLook& look, std::span<const InspectorAction> actions) {
    for (const InspectorRow& row : look.rows) {
        const int32_t count = std::holds_alternative<Vec3 GameObject::*>(row.content) ? 3 : 1;
        for (int32_t i = 0; i < count && row.action != 0; ++i) {
            if (FindIn(actions, row.action + i) == nullptr) return false;
        }
    }
    return true;
}

// A flag that turns over has a message for both of its states, and nothing else has.
constexpr bool MessageFitsEffect(const InspectorAction& action) {
    return std::holds_alternative<bool GameObject::*>(action.effect) ==
           std::holds_alternative<OnOffMessage>(action.message);
}

// True when every number in the block has its action: those of the rows, of the "[x]", and of the arrow,
// which turns a flag over.
constexpr bool IsSound(const Component& block) {
    const InspectorAction* fold = FindIn(block.actions, block.fold);
    return fold != nullptr && std::holds_alternative<bool GameObject::*>(fold->effect) &&
           (block.remove == 0 || FindIn(block.actions, block.remove) != nullptr) &&
           RowsHaveTheirActions(block.look, block.actions) &&
           RowsHaveTheirActions(block.otherLook, block.actions) &&
           std::ranges::all_of(block.actions, MessageFitsEffect);
}
