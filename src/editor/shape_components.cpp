#include "editor/component_blocks.h"

#include "base/path_text.h"
#include "editor/color_wheel.h"
#include "render/builtin_meshes.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

// Shape.

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

void AddShape(GameObject& object) {
    object.hasShape = true;
    if (object.meshIndex < 0) object.meshIndex = kCubeMesh;
}

// clang-format off
constexpr InspectorRow kShapeRows[] = {
    {34, L"Mesh",     36, [](SeenObject o) { return MeshName(o.meshIndex); }},
    {62, L"Material",  0, [](SeenObject o) { return std::wstring{o.hasColor ? L"Color Script" : L"Default"}; }},
};
constexpr InspectorAction kShapeActions[] = {
    { 3, kNoUndo, &GameObject::shapeExpanded, OnOffMessage{L"Shape rozbalen.", L"Shape sbalen."}},
    { 4, "Remove shape", [](Edited o, Press) { o.hasShape = false; }, L"Vlastnost Shape byla odebrana."},
    {36, "Change shape mesh", ChangeMesh,
         [](SeenObject o) { return L"Shape mesh zmenen na: " + MeshName(o.meshIndex); }},
};
// clang-format on
constexpr bool HasMesh(const GameObject& object) { return object.hasShape && object.meshIndex >= 0; }
constexpr Component kShapeBlock{
    .isPresent = HasMesh,
    .fold = 3,
    .remove = 4,
    .look = {L"Shape", 92, kShapeRows},
    .actions = kShapeActions,
    .adding = {L"Shape", L"shape mesh object cube sphere capsule cylinder plane", 11, "Add shape", AddShape,
               L"Pridana vlastnost Shape: objekt dostal tvar."}};
static_assert(IsSound(kShapeBlock));

// Color Script.

static void PickColor(GameObject& object, const ZonePress& press) {
    object.color = ColorOnWheel(press.pointer, press.zone.rect);
    object.hasColor = true;
    object.colorWheelExpanded = true;
}

static void AddColor(GameObject& object) {
    object.hasColor = true;
    object.color = 0xC4CD4E;
    object.roughness = 0.72f;
    object.gloss = 0.18f;
    object.colorWheelExpanded = false;
}

constexpr float Roughness(SeenObject object) { return object.roughness; }
constexpr float Gloss(SeenObject object) { return object.gloss; }
// clang-format off
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
// clang-format on
constexpr Component kColorBlock{.isPresent = Has<&GameObject::hasColor>,
                                .fold = 5,
                                .remove = 6,
                                .look = {L"Color Script", 144, kColorRows},
                                .changesLook = &GameObject::colorWheelExpanded,
                                .otherLook = {L"Color Script", 210, kLargeColorRows},
                                .actions = kColorActions,
                                .adding = {L"Color", L"color colour barva material", 12, "Add color",
                                           AddColor, L"Pridan Color Script: objekt dostal barvu."}};
static_assert(IsSound(kColorBlock));

// Animation.

static const wchar_t* AnimationName(const GameObject& object) {
    if (object.animationType == 1) return L"pulse";
    return object.animationType == 2 ? L"bounce" : L"rotation";
}

static void NextAnimation(GameObject& object, const ZonePress&) {
    const int64_t next = int64_t{object.animationType} + 1;  // a file may hold any number
    object.animationType = static_cast<int32_t>((next % 3 + 3) % 3);
}

static void AddAnimation(GameObject& object) {
    object.hasAnimation = true;
    object.animationType = 0;
    object.animationSpeed = 1.0f;
}

// clang-format off
constexpr InspectorRow kAnimationRows[] = {
    {34, L"Type",  16, [](SeenObject o) { return std::wstring{AnimationName(o)}; }},
    {68, L"Speed", 17, &GameObject::animationSpeed},
};
constexpr InspectorAction kAnimationActions[] = {
    { 7, kNoUndo, &GameObject::animationExpanded, OnOffMessage{L"Animation rozbalena.", L"Animation sbalena."}},
    { 8, "Remove animation", [](Edited o, Press) { o.hasAnimation = false; },
         L"Animation type rotation byla odebrana."},
    {16, "Change animation type", NextAnimation,
         [](SeenObject o) { return std::wstring{L"Animation type: "} + AnimationName(o); }},
    {17, "Change animation speed",
         [](Edited o, Press) { o.animationSpeed = NextStep(o.animationSpeed, 0.5f, 4, 0.5f); },
         L"Animation speed zmenen."},
};
// clang-format on
constexpr Component kAnimationBlock{
    .isPresent = Has<&GameObject::hasAnimation>,
    .fold = 7,
    .remove = 8,
    .look = {L"Animation", 100, kAnimationRows},
    .actions = kAnimationActions,
    .adding = {L"Animation", L"animation rotate rotace pohyb", 13, "Add animation", AddAnimation,
               L"Pridana vlastnost Animation: type rotation."}};
static_assert(IsSound(kAnimationBlock));

// Texture.

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
    return object.texturePath.empty() ? L"Drop image here" : ShownPath(object.texturePath);
}

static void AddTexture(GameObject& object) {
    AddShape(object);
    object.hasTexture = true;
    object.textureExpanded = true;
}

// clang-format off
constexpr InspectorRow kTextureRows[] = {
    {34, L"Image",  0, TextureName},
    {62, L"Mode",  39, [](SeenObject o) { return std::wstring{o.textureRepeat ? L"Repeat" : L"Stretch"}; }},
};
constexpr InspectorAction kTextureActions[] = {
    {37, kNoUndo, &GameObject::textureExpanded, OnOffMessage{L"Texture rozbalena.", L"Texture sbalena."}},
    {38, "Remove texture", RemoveTexture, L"Texture byla odebrana."},
    {39, "Change texture mode", &GameObject::textureRepeat,
         OnOffMessage{L"Texture mode: Repeat.", L"Texture mode: Stretch."}},
};
// clang-format on
constexpr Component kTextureBlock{
    .isPresent = Has<&GameObject::hasTexture>,
    .fold = 37,
    .remove = 38,
    .look = {L"Texture", 92, kTextureRows},
    .actions = kTextureActions,
    .adding = {L"Texture", L"texture image obrazek png jpg material", 40, "Add texture", AddTexture,
               L"Pridana vlastnost Texture. Pretahni PNG/JPG/BMP z Files na objekt."}};
static_assert(IsSound(kTextureBlock));
