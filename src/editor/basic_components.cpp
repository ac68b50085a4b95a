#include "editor/component_blocks.h"

#include "editor/color_wheel.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"
#include "state/editor_state.h"

// Transform. Its boxes count up from the action of their row.

template <NumberEntry::Field field, int32_t firstAction>
static void EnterAxis(GameObject&, const ZonePress& press) {
    StartNumberEntry(editorState.selectedIndex, field, press.zone.action - firstAction);
}

// clang-format off
constexpr InspectorRow kTransformRows[] = {
    { 34, L"Position", 20, &GameObject::position},
    { 68, L"Rotation", 23, &GameObject::rotation},
    {102, L"Scale",    26, &GameObject::scale},
};
constexpr InspectorAction kTransformActions[] = {
    { 1, kNoUndo, &GameObject::transformExpanded, OnOffMessage{L"Transform rozbalen.", L"Transform sbalen."}},
    {20, kNoUndo, EnterAxis<NumberEntry::Field::Position, 20>, kNoMessage, 3},
    {23, kNoUndo, EnterAxis<NumberEntry::Field::Rotation, 23>, kNoMessage, 3},
    {26, kNoUndo, EnterAxis<NumberEntry::Field::Scale, 26>, kNoMessage, 3},
};
// clang-format on
constexpr bool Always(const GameObject&) { return true; }
constexpr Component kTransformBlock{.isPresent = Always,
                                    .fold = 1,
                                    .look = {L"Transform", 136, kTransformRows},
                                    .changesLook = &GameObject::isEntity,
                                    .otherLook = {L"Coordinates", 72, std::span{kTransformRows}.first(1)},
                                    .actions = kTransformActions};
static_assert(IsSound(kTransformBlock));

// Text.

static void EnterTextSize(GameObject&, const ZonePress&) {
    StartNumberEntry(editorState.selectedIndex, NumberEntry::Field::TextSize, -1);
}

static void EnterText(GameObject&, const ZonePress&) { StartTextEdit(editorState.selectedIndex); }

// clang-format off
constexpr InspectorRow kTextRows[] = {
    {34, L"Text", 56, &GameObject::text},
    {62, L"Size", 57, &GameObject::textSize},
};
constexpr InspectorAction kTextActions[] = {
    {55, kNoUndo, &GameObject::textExpanded, OnOffMessage{L"Text rozbalen.", L"Text sbalen."}},
    {56, kNoUndo, EnterText, kNoMessage},
    {57, kNoUndo, EnterTextSize, kNoMessage},
};
// clang-format on
constexpr Component kTextBlock{.isPresent = Has<&GameObject::isText>,
                               .fold = 55,
                               .look = {L"Text", 96, kTextRows},
                               .actions = kTextActions};
static_assert(IsSound(kTextBlock));

// Camera.

static void PickCameraBackground(GameObject& object, const ZonePress& press) {
    object.cameraBackground = ColorOnWheel(press.pointer, press.zone.rect);
    object.cameraBackgroundSet = true;
}

constexpr float Brightness(SeenObject object) { return object.cameraBrightness; }
constexpr float Darkness(SeenObject object) { return 1 - object.cameraBrightness; }
// clang-format off
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
// clang-format on
constexpr Component kCameraBlock{.isPresent = Has<&GameObject::isCamera>,
                                 .fold = 51,
                                 .look = {L"Camera", 150, kCameraRows},
                                 .changesLook = &GameObject::cameraBackgroundSet,
                                 .otherLook = {L"Camera", 210, kLargeCameraRows},
                                 .actions = kCameraActions};
static_assert(IsSound(kCameraBlock));
