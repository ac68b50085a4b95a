#include "editor/components.h"

#include "editor/component_blocks.h"
#include "editor/component_search.h"
#include "state/editor_state.h"

#include <algorithm>
#include <iterator>

// The lists that the blocks stand in: the order of the sections from top to bottom, and the order in which
// the search offers components of equal score. Below them stands what belongs to no section.

constexpr const Component* kSections[] = {
    &kTransformBlock, &kTextBlock,      &kCameraBlock,      &kShapeBlock,     &kColorBlock,
    &kAnimationBlock, &kCollisionBlock, &kGravitationBlock, &kRigidbodyBlock, &kTextureBlock,
};

constexpr const ComponentCommand* kCommands[] = {
    &kRigidbodyBlock.adding,    &kShapeBlock.adding,       &kColorBlock.adding,   &kAnimationBlock.adding,
    &kCustomScriptBlock.adding, &kCollectorBlock.adding,   &kSpawnerBlock.adding, &kTextureBlock.adding,
    &kCollisionBlock.adding,    &kGravitationBlock.adding,
};

constexpr const ScriptBlock* kScripts[] = {&kCollectorBlock, &kSpawnerBlock};

// Run for the number of any component that a click adds.
constexpr InspectorAction kAddFound{.effect =
                                        [](Edited, Press press) {
                                            AddComponent(press.zone.action);
                                            editorState.componentSearchText.clear();
                                            editorState.componentSearchActive = false;
                                        },
                                    .message = kNoMessage};

constexpr InspectorAction kOpenSearch{
    .number = kOpenSearchAction,
    .effect = [](Edited, Press) { editorState.componentSearchActive = true; },
    .message = L"Pis na klavesnici pro hledani komponenty. Enter prida prvni nalezenou."};

std::span<const Component* const> Components() { return kSections; }

std::span<const ComponentCommand* const> ComponentCommands() { return kCommands; }

bool IsOpen(const Component& component, const GameObject& object) {
    return object.*std::get<bool GameObject::*>(FindIn(component.actions, component.fold)->effect);
}

const SectionLook& LookOf(const Component& component, const GameObject& object) {
    const bool isOther = component.changesLook != nullptr && object.*component.changesLook;
    return isOther ? component.otherLook : component.look;
}

const SectionLook& ScriptLook(const std::wstring& title) {
    const auto* const script =
        std::ranges::find_if(kScripts, [&](const ScriptBlock* block) { return block->look.title == title; });
    return script == std::end(kScripts) ? kCustomScriptBlock.look : (*script)->look;
}

static bool IsAddedByClick(int32_t number) {
    return std::ranges::any_of(kCommands, [number](const ComponentCommand* command) {
        return command->action == number && command->isAddedByClick;
    });
}

const InspectorAction* FindInspectorAction(int32_t number) {
    for (const Component* component : kSections) {
        if (const InspectorAction* action = FindIn(component->actions, number)) return action;
    }
    if (number == kRemoveScript.number) return &kRemoveScript;
    if (number == kOpenSearch.number) return &kOpenSearch;
    return IsAddedByClick(number) ? &kAddFound : nullptr;
}

static bool IsBarOrWheel(const InspectorRow& row) {
    return std::holds_alternative<SliderContent>(row.content) ||
           std::holds_alternative<WheelContent>(row.content);
}

bool FollowsPointer(int32_t number) {
    return std::ranges::any_of(kSections, [number](const Component* component) {
        return std::ranges::any_of(component->look.rows, [number](const InspectorRow& row) {
            return row.action == number && IsBarOrWheel(row);
        });
    });
}

// A zone outlives its section by up to one frame: an action of a component that is gone is refused.
bool IsPossible(const InspectorAction& action, const GameObject& object, const ZonePress& press) {
    for (const Component* component : kSections) {
        if (FindIn(component->actions, action.number) && !component->isPresent(object)) return false;
    }
    return action.isPossible == nullptr || action.isPossible(object, press);
}
