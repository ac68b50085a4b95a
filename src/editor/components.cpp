#include "editor/components.h"

#include "base/numbers.h"
#include "base/path_text.h"
#include "editor/color_wheel.h"
#include "editor/widgets.h"
#include "render/builtin_meshes.h"
#include "scene/component_commands.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

// What the actions do, and what the rows show.

// Sums of 0.05 miss 0.5 by a rounding error, which is less than a scene file stores.
constexpr float kRoundingError = 0.0000005f;

// Up by a step; beyond `last` it starts again at `first`.
static float NextStep(float value, float step, float last, float first) {
    const float next = value + step;
    return next > last + kRoundingError ? first : std::min(next, last);
}

std::wstring MeshName(int32_t meshIndex) {
    const auto& meshes = editorState.meshes;
    if (meshIndex < 0 || static_cast<size_t>(meshIndex) >= meshes.size()) return L"Unknown";
    return meshes[static_cast<size_t>(meshIndex)].name;
}

// The mesh after this one in the order in which a click offers them. The Ground and imported meshes are not
// among them; the Cube follows.
static int32_t NextMesh(int32_t meshIndex) {
    constexpr int32_t kCycle[] = {kCubeMesh,     kSphereMesh, kCapsuleMesh,
                                  kCylinderMesh, kPlaneMesh,  kPyramidMesh};
    const auto* found = std::ranges::find(kCycle, meshIndex);
    if (found == std::end(kCycle) || std::next(found) == std::end(kCycle)) return kCycle[0];
    return *std::next(found);
}

static void ChangeMesh(GameObject& object, const ZonePress&) {
    object.hasShape = true;
    object.meshIndex = NextMesh(object.meshIndex);
    object.velocityY = 0;
}

static const wchar_t* AnimationName(const GameObject& object) {
    if (object.animationType == 1) return L"pulse";
    return object.animationType == 2 ? L"bounce" : L"rotation";
}

static void NextAnimation(GameObject& object, const ZonePress&) {
    const int64_t next = int64_t{object.animationType} + 1;  // a file may hold any number
    object.animationType = static_cast<int32_t>((next % 3 + 3) % 3);
}

static void PickColor(GameObject& object, const ZonePress& press) {
    object.color = ColorOnWheel(press.pointer, press.zone.rect);
    object.hasColor = true;
    object.colorWheelExpanded = true;
}

static void PickCameraBackground(GameObject& object, const ZonePress& press) {
    object.cameraBackground = ColorOnWheel(press.pointer, press.zone.rect);
    object.cameraBackgroundSet = true;
}

static float FractionOf(const ZonePress& press) { return BarFraction(press.pointer.x, press.zone.rect); }

static void RemoveTexture(GameObject& object, const ZonePress&) {
    object.hasTexture = false;
    object.textureIndex = -1;
    object.texturePath.clear();
}

static std::wstring TextureName(const GameObject& object) {
    const auto& textures = editorState.textures;
    if (object.textureIndex >= 0 && static_cast<size_t>(object.textureIndex) < textures.size()) {
        return LastComponent(textures[static_cast<size_t>(object.textureIndex)].path);
    }
    return object.texturePath.empty() ? L"Drop image here" : object.texturePath;
}

int32_t ScriptBlocks(const GameObject& object) {
    return std::max(object.scriptCount, static_cast<int32_t>(object.scripts.size()));
}

static bool HasScript(const GameObject& object, const ZonePress& press) {
    return press.zone.block < ScriptBlocks(object);
}

// The last one, whichever block was clicked.
static void RemoveLastScript(GameObject& object, const ZonePress&) {
    if (object.scripts.empty()) {
        --object.scriptCount;
    } else {
        object.scripts.pop_back();
        object.scriptCount = static_cast<int32_t>(object.scripts.size());
    }
}

static std::wstring CollectedName(const GameObject& object) {
    if (!object.collectPrefab.empty()) return object.collectPrefab;
    return object.collectTarget.empty() ? L"Drop .prefab from Files" : object.collectTarget;
}

static std::wstring SpawnedName(const GameObject& object) {
    return object.spawnerPrefab.empty() ? L"First .prefab in Files" : object.spawnerPrefab;
}

constexpr int32_t kFirstTransformAction = 20;  // position x, y, z, rotation x, y, z, scale x, y, z

static void EnterTransform(GameObject&, const ZonePress& press) {
    const int32_t number = press.zone.action - kFirstTransformAction;
    StartNumberEntry(editorState.selectedIndex, static_cast<NumberEntry::Field>(number / 3), number % 3);
}

static void EnterTextSize(GameObject&, const ZonePress&) {
    StartNumberEntry(editorState.selectedIndex, NumberEntry::Field::TextSize, -1);
}

static void EnterText(GameObject&, const ZonePress&) { StartTextEdit(editorState.selectedIndex); }

static void AddFoundComponent(GameObject&, const ZonePress& press) {
    AddComponent(press.zone.action);
    editorState.componentSearchText.clear();
    editorState.componentSearchActive = false;
}

// The blocks, in the order of their sections. Rows: y, label, action, content. Actions: number, undo label,
// effect, message.

using Object = const GameObject&;
using Edited = GameObject&;
using Press = const ZonePress&;

constexpr Point kSmallWheelCentre{150, 56}, kLargeWheelCentre{94, 86};
constexpr int32_t kSmallWheel = 22;

// clang-format off
constexpr InspectorRow kTransformRows[] = {
    { 34, L"Position", 20, &GameObject::position},
    { 68, L"Rotation", 23, &GameObject::rotation},
    {102, L"Scale",    26, &GameObject::scale},
};
constexpr InspectorAction kTransformActions[] = {
    { 1, kNoUndo, &GameObject::transformExpanded, OnOffMessage{L"Transform rozbalen.", L"Transform sbalen."}},
    {kFirstTransformAction, kNoUndo, EnterTransform, kNoMessage, 9},
};

constexpr InspectorRow kTextRows[] = {
    {34, L"Text", 56, &GameObject::text},
    {62, L"Size", 57, &GameObject::textSize},
};
constexpr InspectorAction kTextActions[] = {
    {55, kNoUndo, &GameObject::textExpanded, OnOffMessage{L"Text rozbalen.", L"Text sbalen."}},
    {56, kNoUndo, EnterText, kNoMessage},
    {57, kNoUndo, EnterTextSize, kNoMessage},
};

constexpr float Brightness(Object object) { return object.cameraBrightness; }
constexpr float Darkness(Object object) { return 1 - object.cameraBrightness; }
constexpr InspectorRow kCameraRows[] = {
    { 36, L"Background", 52, WheelContent{&GameObject::cameraBackground, kSmallWheelCentre, kSmallWheel}},
    { 88, L"Svetlost",   53, SliderContent{Brightness}},
    {116, L"Tmavost",    54, SliderContent{Darkness}},
};
constexpr InspectorRow kLargeCameraRows[] = {
    { 36, L"Background", 52, WheelContent{&GameObject::cameraBackground, kLargeWheelCentre, 52}},
    {150, L"Svetlost",   53, SliderContent{Brightness}},
    {178, L"Tmavost",    54, SliderContent{Darkness}},
};
constexpr InspectorAction kCameraActions[] = {
    {51, kNoUndo, &GameObject::cameraExpanded, OnOffMessage{L"Camera rozbalena.", L"Camera sbalena."}},
    {52, "Change camera background", PickCameraBackground, L"Camera background barva nastavena."},
    {53, "Change camera brightness", [](Edited o, Press press) { o.cameraBrightness = FractionOf(press); },
         L"Camera background svetlost nastavena."},
    {54, "Change camera darkness", [](Edited o, Press press) { o.cameraBrightness = 1 - FractionOf(press); },
         L"Camera background tmavost nastavena."},
};

constexpr InspectorRow kShapeRows[] = {
    {34, L"Mesh",     36, [](Object o) { return MeshName(o.meshIndex); }},
    {62, L"Material",  0, [](Object o) { return std::wstring{o.hasColor ? L"Color Script" : L"Default"}; }},
};
constexpr InspectorAction kShapeActions[] = {
    { 3, kNoUndo, &GameObject::shapeExpanded, OnOffMessage{L"Shape rozbalen.", L"Shape sbalen."}},
    { 4, "Remove shape", [](Edited o, Press) { o.hasShape = false; }, L"Vlastnost Shape byla odebrana."},
    {36, "Change shape mesh", ChangeMesh,
         [](Object o) { return L"Shape mesh zmenen na: " + MeshName(o.meshIndex); }},
};

constexpr float Roughness(Object object) { return object.roughness; }
constexpr float Gloss(Object object) { return object.gloss; }
constexpr InspectorRow kColorRows[] = {
    { 36, L"Color", 15, WheelContent{&GameObject::color, kSmallWheelCentre, kSmallWheel}},
    { 88, L"Matte", 18, SliderContent{Roughness}},
    {116, L"Gloss", 19, SliderContent{Gloss}},
};
constexpr InspectorRow kLargeColorRows[] = {
    { 36, L"Color", 15, WheelContent{&GameObject::color, kLargeWheelCentre, 54}},
    {154, L"Matte", 18, SliderContent{Roughness}},
    {182, L"Gloss", 19, SliderContent{Gloss}},
};
constexpr InspectorAction kColorActions[] = {
    { 5, kNoUndo, &GameObject::colorExpanded,
         OnOffMessage{L"Color Script rozbalen.", L"Color Script sbalen."}},
    { 6, "Remove color", [](Edited o, Press) { o.hasColor = false; }, L"Color Script byl odebran."},
    {15, "Change color", PickColor, L"Color Script: barva nastavena barevnym kruhem."},
    {18, "Change material roughness", [](Edited o, Press press) { o.roughness = FractionOf(press); },
         L"Material: nastavena matnost."},
    {19, "Change material gloss", [](Edited o, Press press) { o.gloss = FractionOf(press); },
         L"Material: nastaven lesk."},
};

constexpr InspectorRow kAnimationRows[] = {
    {34, L"Type",  16, [](Object o) { return std::wstring{AnimationName(o)}; }},
    {68, L"Speed", 17, &GameObject::animationSpeed},
};
constexpr InspectorAction kAnimationActions[] = {
    { 7, kNoUndo, &GameObject::animationExpanded, OnOffMessage{L"Animation rozbalena.", L"Animation sbalena."}},
    { 8, "Remove animation", [](Edited o, Press) { o.hasAnimation = false; },
         L"Animation type rotation byla odebrana."},
    {16, "Change animation type", NextAnimation,
         [](Object o) { return std::wstring{L"Animation type: "} + AnimationName(o); }},
    {17, "Change animation speed",
         [](Edited o, Press) { o.animationSpeed = NextStep(o.animationSpeed, 0.5f, 4, 0.5f); },
         L"Animation speed zmenen."},
};

constexpr InspectorRow kCollisionRows[] = {
    {34, L"Type",  0, L"Box"},
    {62, L"Solid", 0, L"true"},
};
constexpr InspectorAction kCollisionActions[] = {
    {29, kNoUndo, &GameObject::collisionExpanded, OnOffMessage{L"Collision rozbalena.", L"Collision sbalena."}},
    {30, "Remove collision", [](Edited o, Press) { o.hasCollision = false; }, L"Collision byla odebrana."},
};

constexpr InspectorRow kGravitationRows[] = {
    {34, L"Strength", 35, &GameObject::gravityStrength},
    {62, L"Velocity",  0, &GameObject::velocityY},
};
constexpr InspectorAction kGravitationActions[] = {
    {31, kNoUndo, &GameObject::gravitationExpanded,
         OnOffMessage{L"Gravitation rozbalena.", L"Gravitation sbalena."}},
    {32, "Remove gravity", [](Edited o, Press) { o.hasGravitation = false; o.velocityY = 0; },
         L"Gravitation byla odebrana."},
    {35, "Change gravity strength",
         [](Edited o, Press) { o.gravityStrength = NextStep(o.gravityStrength, 2, 18, 4); o.velocityY = 0; },
         L"Gravitation strength zmenena."},
};

constexpr InspectorRow kRigidbodyRows[] = {
    {34, L"Mass",       44, &GameObject::mass},
    {62, L"Drag",       45, &GameObject::drag},
    {90, L"Velocity Y",  0, [](Object o) { return Fixed(o.velocity.y, 2); }},
};
constexpr InspectorAction kRigidbodyActions[] = {
    {42, kNoUndo, &GameObject::rigidbodyExpanded, OnOffMessage{L"Rigidbody rozbalen.", L"Rigidbody sbalen."}},
    {43, "Remove rigidbody", [](Edited o, Press) { o.hasRigidbody = false; o.velocity = {}; },
         L"Rigidbody byl odebran."},
    {44, "Change rigidbody mass", [](Edited o, Press) { o.mass = NextStep(o.mass, 0.5f, 5, 0.5f); },
         L"Rigidbody mass zmenen."},
    {45, "Change rigidbody drag", [](Edited o, Press) { o.drag = NextStep(o.drag, 0.05f, 0.5f, 0); },
         L"Rigidbody drag zmenen."},
};

constexpr InspectorRow kTextureRows[] = {
    {34, L"Image",  0, TextureName},
    {62, L"Mode",  39, [](Object o) { return std::wstring{o.textureRepeat ? L"Repeat" : L"Stretch"}; }},
};
constexpr InspectorAction kTextureActions[] = {
    {37, kNoUndo, &GameObject::textureExpanded, OnOffMessage{L"Texture rozbalena.", L"Texture sbalena."}},
    {38, "Remove texture", RemoveTexture, L"Texture byla odebrana."},
    {39, "Change texture mode", &GameObject::textureRepeat,
         OnOffMessage{L"Texture mode: Repeat.", L"Texture mode: Stretch."}},
};
// clang-format on

// Sections are there for what a flag says, but for two.
template <bool GameObject::*flag>
constexpr bool Has(const GameObject& object) {
    return object.*flag;
}
constexpr bool Always(const GameObject&) { return true; }
constexpr bool HasMesh(const GameObject& object) { return object.hasShape && object.meshIndex >= 0; }

constexpr Component kComponentTable[] = {
    {.isPresent = Always,
     .fold = 1,
     .look = {L"Transform", 136, kTransformRows},
     .changesLook = &GameObject::isEntity,
     .otherLook = {L"Coordinates", 72, std::span{kTransformRows}.first(1)},
     .actions = kTransformActions},
    {.isPresent = Has<&GameObject::isText>,
     .fold = 55,
     .look = {L"Text", 96, kTextRows},
     .actions = kTextActions},
    {.isPresent = Has<&GameObject::isCamera>,
     .fold = 51,
     .look = {L"Camera", 150, kCameraRows},
     .changesLook = &GameObject::cameraBackgroundSet,
     .otherLook = {L"Camera", 210, kLargeCameraRows},
     .actions = kCameraActions},
    {.isPresent = HasMesh,
     .fold = 3,
     .remove = 4,
     .look = {L"Shape", 92, kShapeRows},
     .actions = kShapeActions},
    {.isPresent = Has<&GameObject::hasColor>,
     .fold = 5,
     .remove = 6,
     .look = {L"Color Script", 144, kColorRows},
     .changesLook = &GameObject::colorWheelExpanded,
     .otherLook = {L"Color Script", 210, kLargeColorRows},
     .actions = kColorActions},
    {.isPresent = Has<&GameObject::hasAnimation>,
     .fold = 7,
     .remove = 8,
     .look = {L"Animation", 100, kAnimationRows},
     .actions = kAnimationActions},
    {.isPresent = Has<&GameObject::hasCollision>,
     .fold = 29,
     .remove = 30,
     .look = {L"Collision", 92, kCollisionRows},
     .actions = kCollisionActions},
    {.isPresent = Has<&GameObject::hasGravitation>,
     .fold = 31,
     .remove = 32,
     .look = {L"Gravitation", 92, kGravitationRows},
     .actions = kGravitationActions},
    {.isPresent = Has<&GameObject::hasRigidbody>,
     .fold = 42,
     .remove = 43,
     .look = {L"Rigidbody", 120, kRigidbodyRows},
     .actions = kRigidbodyActions},
    {.isPresent = Has<&GameObject::hasTexture>,
     .fold = 37,
     .remove = 38,
     .look = {L"Texture", 92, kTextureRows},
     .actions = kTextureActions},
};
constinit const std::span<const Component> kComponents{kComponentTable};

// Script blocks. The first row is common to all.
// clang-format off
constexpr InspectorRow kCollectorRows[] = {
    {34, L"Enabled", 0, L"true"},
    {62, L"Prefab",  0, CollectedName},
    {90, L"Score",   0, L"+1 and hide prefab"},
};
constexpr InspectorRow kSpawnerRows[] = {
    {34, L"Enabled", 0, L"true"},
    {62, L"Prefab",  0, SpawnedName},
    {90, L"Spawn",   0, L"One random object on plane"},
};
// clang-format on
constexpr SectionLook kScriptLooks[] = {
    {L"CollectOnTouch", 120, kCollectorRows},
    {L"PlanePrefabSpawner", 120, kSpawnerRows},
};
constexpr SectionLook kPlainScriptLook{L"", 64, std::span{kCollectorRows}.first(1)};

// What belongs to no section. The two gameplay scripts are not added by a click on a search result, only by
// Enter: their numbers are passed over.
constexpr InspectorAction kOtherActions[] = {
    {kRemoveScriptAction, "Remove script", RemoveLastScript, L"Posledni vlastni Script byl odebran.", 1,
     HasScript},
    {11, kNoUndo, AddFoundComponent, kNoMessage, 4},
    {33, kNoUndo, AddFoundComponent, kNoMessage, 2},
    {40, kNoUndo, AddFoundComponent, kNoMessage, 2},
    {kOpenSearchAction, kNoUndo, [](Edited, Press) { editorState.componentSearchActive = true; },
     L"Pis na klavesnici pro hledani komponenty. Enter prida prvni nalezenou."},
};

// What the tables promise.

constexpr const InspectorAction* FindIn(std::span<const InspectorAction> actions, int32_t number) {
    for (const InspectorAction& action : actions) {
        if (number >= action.number && number < action.number + action.count) return &action;
    }
    return nullptr;
}

constexpr int32_t kLastAction = 57;

// How often an action number stands in the tables.
constexpr std::ptrdiff_t CountIn(std::span<const InspectorAction> actions, int32_t number) {
    return std::ranges::count_if(actions, [number](const InspectorAction& action) {
        return FindIn({&action, 1}, number) != nullptr;
    });
}

constexpr std::ptrdiff_t CountOfAction(int32_t number) {
    std::ptrdiff_t count = CountIn(kOtherActions, number);
    for (const Component& component : kComponentTable) count += CountIn(component.actions, number);
    return count;
}

constexpr bool ActionNumbersAreUniqueAndComplete() {
    constexpr int32_t kPassedOver[] = {2, 10, 46, 47, 48, 49};
    for (int32_t number = 1; number <= kLastAction; ++number) {
        const bool isAction = std::ranges::find(kPassedOver, number) == std::end(kPassedOver);
        if (CountOfAction(number) != (isAction ? 1 : 0)) return false;
    }
    return true;
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

constexpr bool EveryRowHasItsAction() {
    return std::ranges::all_of(kComponentTable, [](const Component& c) {
        return RowsHaveTheirActions(c.look, c.actions) && RowsHaveTheirActions(c.otherLook, c.actions);
    });
}

// An arrow turns a flag over, and has a message for both of its states.
constexpr bool EveryFoldIsAFlag() {
    return std::ranges::all_of(kComponentTable, [](const Component& c) {
        const InspectorAction* fold = FindIn(c.actions, c.fold);
        return fold != nullptr && std::holds_alternative<bool GameObject::*>(fold->effect);
    });
}

// A flag that turns over has a message for both of its states, and nothing else has.
constexpr bool MessagesFitEffects(std::span<const InspectorAction> actions) {
    return std::ranges::all_of(actions, [](const InspectorAction& action) {
        return std::holds_alternative<bool GameObject::*>(action.effect) ==
               std::holds_alternative<OnOffMessage>(action.message);
    });
}

constexpr bool EveryMessageFitsItsEffect() {
    return MessagesFitEffects(kOtherActions) && std::ranges::all_of(kComponentTable, [](const Component& c) {
               return MessagesFitEffects(c.actions);
           });
}

constexpr bool EveryRemoveIsAnAction() {
    return std::ranges::all_of(kComponentTable, [](const Component& c) {
        return c.remove == 0 || FindIn(c.actions, c.remove) != nullptr;
    });
}

static_assert(ActionNumbersAreUniqueAndComplete());
static_assert(EveryRowHasItsAction());
static_assert(EveryFoldIsAFlag() && EveryRemoveIsAnAction());
static_assert(EveryMessageFitsItsEffect());

// The questions of the header.

bool IsOpen(const Component& component, const GameObject& object) {
    return object.*std::get<bool GameObject::*>(FindIn(component.actions, component.fold)->effect);
}

const SectionLook& LookOf(const Component& component, const GameObject& object) {
    const bool isOther = component.changesLook != nullptr && object.*component.changesLook;
    return isOther ? component.otherLook : component.look;
}

const SectionLook& ScriptLook(const std::wstring& title) {
    const auto* look = std::ranges::find(kScriptLooks, title, &SectionLook::title);
    return look == std::end(kScriptLooks) ? kPlainScriptLook : *look;
}

const InspectorAction* FindInspectorAction(int32_t number) {
    for (const Component& component : kComponentTable) {
        if (const InspectorAction* action = FindIn(component.actions, number)) return action;
    }
    return FindIn(kOtherActions, number);
}

bool IsPossible(const InspectorAction& action, const GameObject& object, const ZonePress& press) {
    for (const Component& component : kComponentTable) {
        if (FindIn(component.actions, action.number) && !component.isPresent(object)) return false;
    }
    return action.isPossible == nullptr || action.isPossible(object, press);
}
