// What the Inspector shows of an object, what a click on it does, and how the search adds it, as tables: one
// block per component.
#pragma once

#include "state/game_object.h"
#include "state/hit_zone.h"

#include <cstdint>
#include <span>
#include <string>
#include <variant>

// A bar from 0 to 1.
struct SliderContent {
    float (*value)(const GameObject&) = nullptr;
};

// A colour wheel, at its full size. Its zone is the square around it.
struct WheelContent {
    uint32_t GameObject::*color = nullptr;  // 0x00BBGGRR
    Point centre{};                         // from the section's top left corner, pixels
    int32_t radius = 0;                     // pixels
};

// The type says how a row looks: three boxes for a vector, a wheel for a colour, a bar for a slider and one
// box for a number, for a text of the object, for a text made from it, and for a fixed text.
using RowContent =
    std::variant<Vec3 GameObject::*, float GameObject::*, std::wstring GameObject::*,
                 std::wstring (*)(const GameObject&), const wchar_t*, SliderContent, WheelContent>;

struct InspectorRow {
    int32_t y = 0;  // of the label, from the section's top, pixels
    const wchar_t* label = nullptr;
    int32_t action = 0;  // what a click on the row's zone runs, 0 nothing; a vector's three boxes count up
    RowContent content{};
};

// How a section looks while it is open.
struct SectionLook {
    const wchar_t* title = nullptr;
    int32_t height = 0;  // pixels from its top to the next section's
    std::span<const InspectorRow> rows{};
};

// A press on a zone.
struct ZonePress {
    Point pointer{};
    HitZone zone{};
};

// The message for each state of a flag that was turned over.
struct OnOffMessage {
    const wchar_t* on = nullptr;
    const wchar_t* off = nullptr;
};

// No undo step: the action changes only what is shown, or it begins something that takes the step itself.
constexpr const char* kNoUndo = nullptr;

// No message: what the action begins says it itself.
constexpr const wchar_t* kNoMessage = nullptr;

struct InspectorAction {
    int32_t number = 0;
    const char* undoLabel = kNoUndo;
    std::variant<bool GameObject::*, void (*)(GameObject&, const ZonePress&)> effect{};  // a flag turns over
    std::variant<const wchar_t*, OnOffMessage, std::wstring (*)(const GameObject&)> message{};
    int32_t count = 1;  // how many numbers from `number` on run it
    // Without it always.
    bool (*isPossible)(const GameObject&, const ZonePress&) = nullptr;
};

// How the search finds a component and adds it.
struct ComponentCommand {
    const wchar_t* title = nullptr;     // as the search shows it
    const wchar_t* keywords = nullptr;  // what the search finds it by, beside the title
    int32_t action = 0;                 // number of the zone that shows it as a result; 0: it cannot be added
    const char* undoLabel = nullptr;
    void (*add)(GameObject& object) = nullptr;
    const wchar_t* message = nullptr;
    bool isAddedByClick = true;  // else only Enter adds it, and a click passes its zone over
};

struct Component {
    bool (*isPresent)(const GameObject&) = nullptr;
    int32_t fold = 0;    // action of the arrow; it turns the flag over that keeps the section open
    int32_t remove = 0;  // action of the "[x]", 0 none
    SectionLook look{};
    bool GameObject::*changesLook = nullptr;  // while set, the section looks as follows; null never
    SectionLook otherLook{};
    std::span<const InspectorAction> actions{};
    ComponentCommand adding{};
};

// A kind of script. Its title is the name of the scripts that it is for; empty for all others.
struct ScriptBlock {
    SectionLook look{};
    ComponentCommand adding{};
};

// In the order of their sections.
std::span<const Component* const> Components();

// What can be added, in the order in which the search lists it.
std::span<const ComponentCommand* const> ComponentCommands();

// Give an object a shape, the Cube when it has no mesh, and a Collision whose section is open. For components
// and drops that bring them along.
void AddShape(GameObject& object);
void AddCollision(GameObject& object);

// Height of a section that is closed.
constexpr int32_t kClosedSectionHeight = 30;

bool IsOpen(const Component& component, const GameObject& object);
const SectionLook& LookOf(const Component& component, const GameObject& object);

// How many blocks of scripts stand in the Inspector: also of those that are only counted.
int32_t ScriptBlocks(const GameObject& object);

// The look of a script's block. Its title is the script's name.
const SectionLook& ScriptLook(const std::wstring& title);

// Actions of zones that belong to no component's section.
constexpr int32_t kRemoveScriptAction = 9;
constexpr int32_t kOpenSearchAction = 50;

// The action that a click on a zone of this number runs. Null for the numbers that a click passes over.
const InspectorAction* FindInspectorAction(int32_t number);

// True for the number of a bar or a colour wheel, which go on setting their value while the button is held.
bool FollowsPointer(int32_t number);

// True while the object has what the action changes: its component, and the script whose block was pressed.
bool IsPossible(const InspectorAction& action, const GameObject& object, const ZonePress& press);

// The name under which a mesh is shown; "Unknown" for an index without a mesh.
std::wstring MeshName(int32_t meshIndex);
