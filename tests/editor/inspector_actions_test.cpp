#include "editor/components.h"
#include "scene/interaction.h"
#include "scene/undo.h"
#include "support/capture.h"
#include "support/inspector_panel.h"

#include "doctest/doctest.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// One action: the object of before and after, what is said, and whether undo knows of it.
struct ActionCase {
    int32_t action = 0;
    void (*before)(GameObject&) = nullptr;  // changes an object with every component
    void (*after)(GameObject&) = nullptr;
    const wchar_t* message = L"";
    bool hasUndoStep = true;
};

static void Nothing(GameObject&) {}

// The place in the list of the zone with an action that comes after `skipped` others with it.
static size_t ZoneIndexOf(int32_t action, size_t skipped) {
    const HitZoneList& zones = editorState.inspectorZones;
    for (size_t i = 0; i < zones.size(); ++i) {
        if (zones[i].action == action && skipped-- == 0) return i;
    }
    return zones.size();
}

// clang-format off
static const ActionCase kActionCases[] = {
    { 1, Nothing, [](GameObject& o) { o.transformExpanded = false; }, L"Transform sbalen.", false},
    { 1, [](GameObject& o) { o.transformExpanded = false; }, [](GameObject& o) { o.transformExpanded = true; },
         L"Transform rozbalen.", false},
    { 3, Nothing, [](GameObject& o) { o.shapeExpanded = false; }, L"Shape sbalen.", false},
    { 3, [](GameObject& o) { o.shapeExpanded = false; }, [](GameObject& o) { o.shapeExpanded = true; },
         L"Shape rozbalen.", false},
    { 4, Nothing, [](GameObject& o) { o.hasShape = false; }, L"Vlastnost Shape byla odebrana."},
    { 5, Nothing, [](GameObject& o) { o.colorExpanded = false; }, L"Color Script sbalen.", false},
    { 5, [](GameObject& o) { o.colorExpanded = false; }, [](GameObject& o) { o.colorExpanded = true; },
         L"Color Script rozbalen.", false},
    { 6, Nothing, [](GameObject& o) { o.hasColor = false; }, L"Color Script byl odebran."},
    { 7, Nothing, [](GameObject& o) { o.animationExpanded = false; }, L"Animation sbalena.", false},
    { 7, [](GameObject& o) { o.animationExpanded = false; }, [](GameObject& o) { o.animationExpanded = true; },
         L"Animation rozbalena.", false},
    { 8, Nothing, [](GameObject& o) { o.hasAnimation = false; }, L"Animation type rotation byla odebrana."},
    { 9, Nothing, [](GameObject& o) { o.scripts.pop_back(); o.scriptCount = 2; },
         L"Posledni vlastni Script byl odebran."},
    {15, [](GameObject& o) { o.color = 0x123456; },
         [](GameObject& o) { o.color = 0xFFFFFF; o.colorWheelExpanded = true; },
         L"Color Script: barva nastavena barevnym kruhem."},
    {16, Nothing, [](GameObject& o) { o.animationType = 1; }, L"Animation type: pulse"},
    {16, [](GameObject& o) { o.animationType = 1; }, [](GameObject& o) { o.animationType = 2; },
         L"Animation type: bounce"},
    {16, [](GameObject& o) { o.animationType = 2; }, [](GameObject& o) { o.animationType = 0; },
         L"Animation type: rotation"},
    {17, Nothing, [](GameObject& o) { o.animationSpeed = 1.5f; }, L"Animation speed zmenen."},
    {18, Nothing, [](GameObject& o) { o.roughness = 0.5f; }, L"Material: nastavena matnost."},
    {19, Nothing, [](GameObject& o) { o.gloss = 0.5f; }, L"Material: nastaven lesk."},
    {29, Nothing, [](GameObject& o) { o.collisionExpanded = false; }, L"Collision sbalena.", false},
    {29, [](GameObject& o) { o.collisionExpanded = false; }, [](GameObject& o) { o.collisionExpanded = true; },
         L"Collision rozbalena.", false},
    {30, Nothing, [](GameObject& o) { o.hasCollision = false; }, L"Collision byla odebrana."},
    {31, Nothing, [](GameObject& o) { o.gravitationExpanded = false; }, L"Gravitation sbalena.", false},
    {31, [](GameObject& o) { o.gravitationExpanded = false; },
         [](GameObject& o) { o.gravitationExpanded = true; }, L"Gravitation rozbalena.", false},
    {32, [](GameObject& o) { o.velocityY = -3; },
         [](GameObject& o) { o.hasGravitation = false; o.velocityY = 0; }, L"Gravitation byla odebrana."},
    {35, [](GameObject& o) { o.velocityY = -3; o.gravityStrength = 4; },
         [](GameObject& o) { o.gravityStrength = 6; o.velocityY = 0; }, L"Gravitation strength zmenena."},
    {36, [](GameObject& o) { o.velocityY = -3; }, [](GameObject& o) { o.meshIndex = 4; o.velocityY = 0; },
         L"Shape mesh zmenen na: Sphere"},
    {37, Nothing, [](GameObject& o) { o.textureExpanded = false; }, L"Texture sbalena.", false},
    {37, [](GameObject& o) { o.textureExpanded = false; }, [](GameObject& o) { o.textureExpanded = true; },
         L"Texture rozbalena.", false},
    {38, [](GameObject& o) { o.textureIndex = 2; o.texturePath = L"a.png"; },
         [](GameObject& o) { o.hasTexture = false; o.textureIndex = -1; o.texturePath = L""; },
         L"Texture byla odebrana."},
    {39, Nothing, [](GameObject& o) { o.textureRepeat = true; }, L"Texture mode: Repeat."},
    {39, [](GameObject& o) { o.textureRepeat = true; }, [](GameObject& o) { o.textureRepeat = false; },
         L"Texture mode: Stretch."},
    {42, Nothing, [](GameObject& o) { o.rigidbodyExpanded = false; }, L"Rigidbody sbalen.", false},
    {42, [](GameObject& o) { o.rigidbodyExpanded = false; }, [](GameObject& o) { o.rigidbodyExpanded = true; },
         L"Rigidbody rozbalen.", false},
    {43, [](GameObject& o) { o.velocity = {1, 2, 3}; },
         [](GameObject& o) { o.hasRigidbody = false; o.velocity = {0, 0, 0}; }, L"Rigidbody byl odebran."},
    {44, Nothing, [](GameObject& o) { o.mass = 1.5f; }, L"Rigidbody mass zmenen."},
    {45, [](GameObject& o) { o.drag = 0.25f; }, [](GameObject& o) { o.drag = 0.3f; },
         L"Rigidbody drag zmenen."},
    {50, Nothing, Nothing,
         L"Pis na klavesnici pro hledani komponenty. Enter prida prvni nalezenou.", false},
    {51, Nothing, [](GameObject& o) { o.cameraExpanded = false; }, L"Camera sbalena.", false},
    {51, [](GameObject& o) { o.cameraExpanded = false; }, [](GameObject& o) { o.cameraExpanded = true; },
         L"Camera rozbalena.", false},
    {52, Nothing, [](GameObject& o) { o.cameraBackground = 0xFFFFFF; o.cameraBackgroundSet = true; },
         L"Camera background barva nastavena."},
    {53, Nothing, [](GameObject& o) { o.cameraBrightness = 0.5f; },
         L"Camera background svetlost nastavena."},
    {54, Nothing, [](GameObject& o) { o.cameraBrightness = 0.5f; },
         L"Camera background tmavost nastavena."},
    {55, Nothing, [](GameObject& o) { o.textExpanded = false; }, L"Text sbalen.", false},
    {55, [](GameObject& o) { o.textExpanded = false; }, [](GameObject& o) { o.textExpanded = true; },
         L"Text rozbalen.", false},
};
// clang-format on

// High enough that every section of the fullest object lies inside the panel.
constexpr int32_t kTall = 2200;

TEST_CASE("every action changes its fields and no other, says its message, and takes one undo step or none") {
    for (const ActionCase& test : kActionCases) {
        CAPTURE(test.action);
        GameObject object = ObjectWithEverything();
        test.before(object);
        OpenInspector(object, 1360, kTall);
        const int32_t selection = editorState.selectedIndex;

        CHECK(PressZone(test.action));
        GameObject expected = object;
        test.after(expected);
        CHECK(InspectedObject() == expected);
        CHECK(editorState.statusMessage == test.message);
        CHECK(editorState.undoSteps.size() == (test.hasUndoStep ? 1 : 0));
        CHECK(editorState.selectedIndex == selection);
        CHECK(editorState.scene.size() == 1);

        if (!test.hasUndoStep) continue;
        undo();
        CHECK(InspectedObject() == object);
    }
}

TEST_CASE("every action names its undo step") {
    const std::pair<int32_t, std::string_view> labels[] = {
        {4, "Remove shape"},
        {6, "Remove color"},
        {8, "Remove animation"},
        {9, "Remove script"},
        {15, "Change color"},
        {16, "Change animation type"},
        {17, "Change animation speed"},
        {18, "Change material roughness"},
        {19, "Change material gloss"},
        {30, "Remove collision"},
        {32, "Remove gravity"},
        {35, "Change gravity strength"},
        {36, "Change shape mesh"},
        {38, "Remove texture"},
        {39, "Change texture mode"},
        {43, "Remove rigidbody"},
        {44, "Change rigidbody mass"},
        {45, "Change rigidbody drag"},
        {52, "Change camera background"},
        {53, "Change camera brightness"},
        {54, "Change camera darkness"},
    };
    for (const auto& [action, label] : labels) {
        CAPTURE(action);
        OpenInspector(ObjectWithEverything(), 1360, kTall);
        CHECK(PressZone(action));
        REQUIRE(editorState.undoSteps.size() == 1);
        CHECK(editorState.undoSteps[0].label == label);
    }
}

TEST_CASE("a press on the Add Component box opens the search and keeps its text") {
    OpenInspector({.meshIndex = 0});
    editorState.componentSearchText = L"rig";
    CHECK(PressZone(50));
    CHECK(editorState.componentSearchActive);
    CHECK(editorState.componentSearchText == L"rig");
}

TEST_CASE("a press on a component of a transform starts to type that number") {
    using Field = NumberEntry::Field;
    const struct {
        int32_t action;
        Field field;
        int32_t component;
        const wchar_t* text;
    } cases[] = {
        {20, Field::Position, 0, L"1.25"},  {21, Field::Position, 1, L"2.00"},
        {22, Field::Position, 2, L"-3.50"}, {23, Field::Rotation, 0, L"0.10"},
        {24, Field::Rotation, 1, L"0.20"},  {25, Field::Rotation, 2, L"0.30"},
        {26, Field::Scale, 0, L"4.00"},     {27, Field::Scale, 1, L"5.00"},
        {28, Field::Scale, 2, L"6.00"},
    };
    for (const auto& test : cases) {
        CAPTURE(test.action);
        const GameObject object{
            .position{1.25f, 2, -3.5f}, .rotation{0.1f, 0.2f, 0.3f}, .scale{4, 5, 6}, .meshIndex = 0};
        OpenInspector(object);
        CHECK(PressZone(test.action));
        CHECK(editorState.numberEntry.open);
        CHECK(editorState.numberEntry.target == 0);
        CHECK(editorState.numberEntry.field == test.field);
        CHECK(editorState.numberEntry.component == test.component);
        CHECK(editorState.numberEntry.text == test.text);
        CHECK(editorState.statusMessage == L"Napis hodnotu transformu, Enter potvrdi a Esc zrusi.");
        CHECK(editorState.undoSteps.empty());
        CHECK(InspectedObject() == object);
    }
}

TEST_CASE("a press on the size of a Text starts to type it") {
    OpenInspector({.hasShape = false, .isText = true, .textSize = 24.5f});
    CHECK(PressZone(57));
    CHECK(editorState.numberEntry.open);
    CHECK(editorState.numberEntry.target == 0);
    CHECK(editorState.numberEntry.field == NumberEntry::Field::TextSize);
    CHECK(editorState.numberEntry.component == -1);
    CHECK(editorState.numberEntry.text == L"24.50");
    CHECK(editorState.statusMessage == L"Napis velikost textu, Enter potvrdi a Esc zrusi.");
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("a press on the text of a Text starts to type it") {
    OpenInspector({.hasShape = false, .isText = true, .text = L"Score: 3"});
    CHECK(PressZone(56));
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Text);
    CHECK(editorState.nameEntry.target == 0);
    CHECK(editorState.nameEntry.text == L"Score: 3");
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("a press on a found component adds it, empties the search and closes it") {
    const struct {
        int32_t action;
        const wchar_t* query;
        bool (*isThere)(const GameObject&);
        const wchar_t* message;
    } cases[] = {
        {11, L"mesh", [](const GameObject& o) { return o.hasShape && o.meshIndex == 0; },
         L"Pridana vlastnost Shape: objekt dostal tvar."},
        {12, L"barva", [](const GameObject& o) { return o.hasColor; },
         L"Pridan Color Script: objekt dostal barvu."},
        {13, L"rotace", [](const GameObject& o) { return o.hasAnimation; },
         L"Pridana vlastnost Animation: type rotation."},
        {14, L"cpp",
         [](const GameObject& o) { return o.scripts == std::vector<std::wstring>{L"Custom Script 01"}; },
         L"Pridan vlastni Script jako vlastnost objektu."},
        {33, L"kolize", [](const GameObject& o) { return o.hasCollision; },
         L"Pridana vlastnost Collision: objekt muze zastavit gravitation."},
        {34, L"fall", [](const GameObject& o) { return o.hasGravitation; },
         L"Pridana vlastnost Gravitation: v Play mode objekt pada dolu a pouziva Collision."},
        {40, L"png", [](const GameObject& o) { return o.hasTexture; },
         L"Pridana vlastnost Texture. Pretahni PNG/JPG/BMP z Files na objekt."},
        {41, L"mass", [](const GameObject& o) { return o.hasRigidbody; },
         L"Pridan Rigidbody: fyzikalni telo s kolizi, mass, drag a gravitaci."},
    };
    for (const auto& test : cases) {
        CAPTURE(test.action);
        OpenInspector({.hasShape = false});
        editorState.componentSearchActive = true;
        editorState.componentSearchText = test.query;
        DrawInspectorAgain();
        CHECK(PressZone(test.action));
        CHECK(test.isThere(InspectedObject()));
        CHECK(editorState.statusMessage == test.message);
        CHECK(editorState.undoSteps.size() == 1);
        CHECK(editorState.componentSearchText == L"");
        CHECK_FALSE(editorState.componentSearchActive);
    }
}

TEST_CASE("a press on a found gameplay script is taken and adds nothing") {
    for (const auto& [action, query] : {std::pair{46, L"pickup"}, std::pair{47, L"spawn"}}) {
        CAPTURE(action);
        OpenInspector({.meshIndex = 0});
        editorState.componentSearchActive = true;
        editorState.componentSearchText = query;
        DrawInspectorAgain();
        CHECK(PressZone(action));
        CHECK(InspectedObject() == GameObject{.meshIndex = 0});
        CHECK(editorState.statusMessage == L"untouched");
        CHECK(editorState.undoSteps.empty());
        CHECK(editorState.componentSearchActive);
        CHECK(editorState.componentSearchText == query);
    }
}

TEST_CASE("numbers without an action are passed over, and the first zone with one wins") {
    for (const int32_t number : {-1, 0, 2, 10, 46, 47, 48, 49, 58, 1000, INT32_MAX, INT32_MIN}) {
        CAPTURE(number);
        OpenInspector(ObjectWithEverything());
        const Rect rect{1100, 300, 1120, 320};
        editorState.inspectorZones = {{rect, number}, {rect, 8}, {rect, 6}};
        CHECK(PressInspector({1110, 310}));
        CHECK(editorState.statusMessage == L"Animation type rotation byla odebrana.");
        CHECK_FALSE(InspectedObject().hasAnimation);
        CHECK(InspectedObject().hasColor);
        CHECK(editorState.undoSteps.size() == 1);
    }
}

TEST_CASE("a zone holds its left and top edge and not its right and bottom one") {
    OpenInspector(ObjectWithEverything());
    const Rect rect{1100, 300, 1120, 320};
    const auto acts = [&](Point p) {
        editorState.scene[0].hasColor = true;
        editorState.inspectorZones = {{rect, 6}};
        CHECK(PressInspector(p));
        return !InspectedObject().hasColor;
    };
    CHECK(acts({1100, 300}));
    CHECK(acts({1119, 319}));
    CHECK_FALSE(acts({1099, 310}));
    CHECK_FALSE(acts({1120, 310}));
    CHECK_FALSE(acts({1110, 299}));
    CHECK_FALSE(acts({1110, 320}));
}

TEST_CASE("a press outside the panel is not taken, one inside is, whatever lies there") {
    OpenInspector(ObjectWithEverything());
    editorState.inspectorZones = {{{-5000, -5000, 5000, 5000}, 6}};
    for (const Point outside : {Point{1039, 300}, Point{1360, 300}, Point{1200, 41}, Point{1200, 688}}) {
        CHECK_FALSE(PressInspector(outside));
    }
    CHECK(InspectedObject() == ObjectWithEverything());
    CHECK(editorState.statusMessage == L"untouched");

    editorState.inspectorZones.clear();
    for (const Point inside : {Point{1040, 300}, Point{1359, 300}, Point{1200, 42}, Point{1200, 687}}) {
        CHECK(PressInspector(inside));
    }
    CHECK(InspectedObject() == ObjectWithEverything());
    CHECK(editorState.statusMessage == L"untouched");
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("without a valid selection a press in the panel is taken and does nothing") {
    for (const int32_t selection : {-1, 1, 99, INT32_MIN, INT32_MAX}) {
        CAPTURE(selection);
        OpenInspector(ObjectWithEverything());
        editorState.selectedIndex = selection;
        editorState.inspectorZones = {{{-5000, -5000, 5000, 5000}, 50}};
        CHECK(PressInspector({1200, 300}));
        CHECK_FALSE(PressInspector({1000, 300}));
        CHECK(editorState.statusMessage == L"untouched");
        CHECK_FALSE(editorState.componentSearchActive);
        CHECK(editorState.undoSteps.empty());
    }
    OpenInspector(ObjectWithEverything());
    editorState.scene.clear();
    CHECK(PressInspector({1200, 300}));
    CHECK(editorState.statusMessage == L"untouched");
}

TEST_CASE("a press acts on what the last frame drew") {
    OpenInspector({.name = L"a", .meshIndex = 0});
    const Point arrow = MiddleOf(ZoneOf(3));
    editorState.scene[0].hasAnimation = true;
    editorState.scene[0].transformExpanded = false;  // the next frame moves Shape up
    CHECK(PressInspector(arrow));
    CHECK_FALSE(InspectedObject().shapeExpanded);
}

TEST_CASE("two presses before the next frame remove a component once") {
    for (const int32_t remove : {4, 6, 8, 30, 32, 38, 43}) {
        CAPTURE(remove);
        OpenInspector(ObjectWithEverything(), 1360, 3000);
        const Point at = MiddleOf(ZoneOf(remove));
        CHECK(PressInspector(at));
        const GameObject after = InspectedObject();
        CHECK_FALSE(after == ObjectWithEverything());
        editorState.statusMessage = L"untouched";
        CHECK(PressInspector(at));
        CHECK(InspectedObject() == after);
        CHECK(editorState.undoSteps.size() == 1);
        CHECK(editorState.statusMessage == L"untouched");
    }
}

TEST_CASE("what a section shows is not changed once its component is gone, whatever was drawn") {
    for (const Component* component : Components()) {
        if (component->remove == 0) continue;
        OpenInspector(ObjectWithEverything(), 1360, 3000);
        const HitZoneList drawn = editorState.inspectorZones;
        CHECK(PressInspector(MiddleOf(ZoneOf(component->remove))));
        const GameObject after = InspectedObject();
        for (const InspectorAction& action : component->actions) {
            CAPTURE(action.number);
            const Rect zone = ZoneOf(action.number);
            REQUIRE(zone != Rect{});
            CHECK(PressInspector(MiddleOf(zone)));
            CHECK(InspectedObject() == after);
        }
        CHECK(editorState.undoSteps.size() == 1);
    }
}

TEST_CASE("two presses on a script's block before the next frame remove one script") {
    OpenInspector({.hasShape = false, .scriptCount = 2, .scripts = {L"a", L"b"}});
    const Point last = MiddleOf(editorState.inspectorZones.at(ZoneIndexOf(9, 1)).rect);
    CHECK(PressInspector(last));
    CHECK(PressInspector(last));  // on a block that is gone
    CHECK(InspectedObject().scripts == std::vector<std::wstring>{L"a"});
    CHECK(editorState.undoSteps.size() == 1);
}

TEST_CASE("another object than the one that was drawn is not edited") {
    const GameObject body{.hasRigidbody = true};
    OpenInspector(body);
    editorState.scene = {body, body};
    const Point mass = MiddleOf(ZoneOf(44));
    editorState.selectedIndex = 1;
    CHECK(PressInspector(mass));
    CHECK(editorState.scene == Scene{body, body});
    CHECK(editorState.undoSteps.empty());
    DrawInspectorAgain();
    CHECK(PressInspector(mass));
    CHECK(editorState.scene[1].mass == 1.5f);
}

TEST_CASE("once indices mean other objects, a press edits none of them before the next frame") {
    for (const int32_t inspected : {0, 1}) {
        OpenInspector(ObjectWithEverything());
        editorState.scene.push_back(ObjectWithEverything());
        editorState.selectedIndex = inspected;
        DrawInspectorAgain();
        ForgetObjectIndices();
        CHECK(PressInspector(MiddleOf(ZoneOf(4))));
        for (const GameObject& object : editorState.scene) CHECK(object.hasShape);
        DrawInspectorAgain();
        CHECK(PressInspector(MiddleOf(ZoneOf(4))));
        CHECK_FALSE(editorState.scene[static_cast<size_t>(inspected)].hasShape);
    }
}

TEST_CASE("the selected object is edited, and no other") {
    OpenInspector({.meshIndex = 0});
    editorState.scene = {{.name = L"a", .hasRigidbody = true},
                         {.name = L"b", .hasRigidbody = true},
                         {.name = L"c", .hasRigidbody = true}};
    editorState.selectedIndex = 1;
    DrawInspectorAgain();
    CHECK(PressZone(44));
    CHECK(editorState.scene[0].mass == 1.0f);
    CHECK(editorState.scene[1].mass == 1.5f);
    CHECK(editorState.scene[2].mass == 1.0f);
    CHECK(editorState.selectedIndex == 1);
}

// Presses a zone again and again and says what each press made of a field.
static std::vector<float> Steps(GameObject object, int32_t action, float GameObject::*field, size_t count) {
    OpenInspector(std::move(object), 1360, kTall);
    std::vector<float> values;
    while (values.size() < count && PressZone(action)) values.push_back(InspectedObject().*field);
    return values;
}

using Values = std::vector<float>;

TEST_CASE("animation speed steps by one half and wraps above four") {
    CHECK(Steps({.hasAnimation = true}, 17, &GameObject::animationSpeed, 9) ==
          Values{1.5f, 2, 2.5f, 3, 3.5f, 4, 0.5f, 1, 1.5f});
    CHECK(Steps({.hasAnimation = true, .animationSpeed = 3.75f}, 17, &GameObject::animationSpeed, 1) ==
          Values{0.5f});
}

TEST_CASE("gravity strength steps by two and wraps above eighteen to four") {
    const Values steps = Steps({.hasGravitation = true}, 35, &GameObject::gravityStrength, 6);
    const Values expected{11.8f, 13.8f, 15.8f, 17.8f, 4, 6};
    REQUIRE(steps.size() == expected.size());
    for (size_t i = 0; i < steps.size(); ++i) CHECK(std::fabs(steps[i] - expected[i]) < 0.00001f);
    CHECK(Steps({.hasGravitation = true, .gravityStrength = 16}, 35, &GameObject::gravityStrength, 2) ==
          Values{18, 4});
}

TEST_CASE("mass steps by one half and wraps above five") {
    CHECK(Steps({.hasRigidbody = true, .mass = 4}, 44, &GameObject::mass, 4) == Values{4.5f, 5, 0.5f, 1});
}

TEST_CASE("drag steps by a twentieth and wraps above one half to nothing") {
    CHECK(Steps({.hasRigidbody = true, .drag = 0.45f}, 45, &GameObject::drag, 3) == Values{0.5f, 0, 0.05f});
    CHECK(Steps({.hasRigidbody = true, .drag = 0.46f}, 45, &GameObject::drag, 1) == Values{0});
}

TEST_CASE("drag reaches one half by clicks from its first value, though its sums are inexact") {
    const Values steps = Steps({.hasRigidbody = true}, 45, &GameObject::drag, 11);
    const Values expected{0.1f, 0.15f, 0.2f, 0.25f, 0.3f, 0.35f, 0.4f, 0.45f, 0.5f, 0, 0.05f};
    REQUIRE(steps.size() == expected.size());
    for (size_t i = 0; i < steps.size(); ++i) CHECK(std::fabs(steps[i] - expected[i]) < 0.000001f);
}

TEST_CASE("an animation type outside its range steps back into it") {
    const struct {
        int32_t before, after;
    } cases[] = {{3, 1}, {4, 2}, {5, 0}, {-1, 0}, {-2, 2}, {-3, 1}, {INT32_MAX, 2}, {INT32_MIN, 2}};
    for (const auto& [before, after] : cases) {
        CAPTURE(before);
        OpenInspector({.hasAnimation = true, .animationType = before});
        CHECK(PressZone(16));
        CHECK(InspectedObject().animationType == after);
    }
}

TEST_CASE("steps from what is not a number or infinite end without harm") {
    const float infinity = std::numeric_limits<float>::infinity();
    CHECK(Steps({.hasRigidbody = true, .mass = infinity}, 44, &GameObject::mass, 1) == Values{0.5f});
    const Values steps = Steps({.hasRigidbody = true, .mass = std::nanf("")}, 44, &GameObject::mass, 1);
    REQUIRE(steps.size() == 1);
    CHECK(std::isnan(steps[0]));
}

TEST_CASE("a slider gives nothing at its left end and almost everything at its last pixel") {
    const struct {
        int32_t action;
        float GameObject::*field;
        bool isDarkness;
    } cases[] = {{18, &GameObject::roughness, false},
                 {19, &GameObject::gloss, false},
                 {53, &GameObject::cameraBrightness, false},
                 {54, &GameObject::cameraBrightness, true}};
    for (const auto& test : cases) {
        CAPTURE(test.action);
        OpenInspector(ObjectWithEverything(), 1360, kTall);
        const Rect bar = ZoneOf(test.action);
        CHECK(bar.right - bar.left == 156);
        CHECK(PressInspector({bar.left, bar.top}));
        CHECK(InspectedObject().*test.field == (test.isDarkness ? 1.0f : 0.0f));
        CHECK(PressInspector({bar.right - 1, bar.bottom - 1}));
        CHECK(InspectedObject().*test.field == (test.isDarkness ? 1 - 155.0f / 156.0f : 155.0f / 156.0f));
        editorState.statusMessage = L"untouched";
        CHECK(PressInspector({bar.left - 1, bar.top}));
        CHECK(PressInspector({bar.right, bar.top}));
        CHECK(editorState.statusMessage == L"untouched");
    }
}

// Hue 0 is the left of the wheel and grows clockwise on the screen: a quarter at the top, a half at the
// right.
TEST_CASE("the wheel picks its colours by the angle and the distance from its centre") {
    const struct {
        int32_t dx, dy;
        uint32_t color;  // 0x00BBGGRR
    } cases[] = {
        {0, 0, 0xFFFFFF},      // no saturation
        {-22, 0, 0x0000FF},    // red
        {0, -22, 0x00FF7F},    // between yellow and green: red 127.5
        {21, 0, 0xFFFF0B},     // cyan of saturation 21 / 22: red 11.59
        {0, 21, 0xFF0B85},     // hue 3 / 4 is sector 4.5: red t = 133.3, green p = 11.59
        {-22, -22, 0x00BFFF},  // the corner lies outside the wheel and counts as its edge: green 191.25
    };
    for (const auto& test : cases) {
        CAPTURE(test.dx);
        CAPTURE(test.dy);
        for (const int32_t action : {15, 52}) {
            OpenInspector(ObjectWithEverything(), 1360, kTall);
            const Point centre = MiddleOf(ZoneOf(action));
            CHECK(PressInspector({centre.x + test.dx, centre.y + test.dy}));
            CHECK((action == 15 ? InspectedObject().color : InspectedObject().cameraBackground) ==
                  test.color);
        }
    }
}

TEST_CASE("the first pick enlarges the wheel, and it stays large") {
    OpenInspector(ObjectWithEverything(), 1360, kTall);
    CHECK(Width(ZoneOf(15)) == 44);
    CHECK(Width(ZoneOf(52)) == 44);
    CHECK(PressZone(15));
    CHECK(Width(ZoneOf(15)) == 108);
    CHECK(Width(ZoneOf(52)) == 44);
    CHECK(PressZone(52));
    CHECK(Width(ZoneOf(52)) == 104);
    CHECK(PressZone(15));
    CHECK(PressZone(52));
    CHECK(Width(ZoneOf(15)) == 108);
    CHECK(Width(ZoneOf(52)) == 104);
    CHECK(Height(ZoneOf(15)) == 108);
    CHECK(Height(ZoneOf(52)) == 104);
}

TEST_CASE("meshes change in their fixed order, and what is not in it becomes a Cube") {
    OpenInspector({.meshIndex = 0});
    const struct {
        int32_t mesh;
        const wchar_t* message;
    } cycle[] = {{4, L"Shape mesh zmenen na: Sphere"},   {5, L"Shape mesh zmenen na: Capsule"},
                 {6, L"Shape mesh zmenen na: Cylinder"}, {3, L"Shape mesh zmenen na: Plane"},
                 {1, L"Shape mesh zmenen na: Pyramid"},  {0, L"Shape mesh zmenen na: Cube"}};
    for (const auto& step : cycle) {
        CHECK(PressZone(36));
        CHECK(InspectedObject().meshIndex == step.mesh);
        CHECK(editorState.statusMessage == step.message);
    }
    for (const int32_t mesh : {2, 7, 8, 4000, INT32_MAX}) {
        CAPTURE(mesh);
        OpenInspector({.meshIndex = mesh});
        CHECK(PressZone(36));
        CHECK(InspectedObject().meshIndex == 0);
        CHECK(editorState.statusMessage == L"Shape mesh zmenen na: Cube");
    }
}

TEST_CASE("a mesh that is not in the list is named Unknown") {
    OpenInspector({.meshIndex = 0});
    editorState.meshes.clear();
    CHECK(PressZone(36));
    CHECK(editorState.statusMessage == L"Shape mesh zmenen na: Unknown");
}

TEST_CASE("whichever script block is clicked, the last script goes") {
    OpenInspector({.hasShape = false, .scriptCount = 3, .scripts = {L"a", L"b", L"c"}});
    CHECK(PressZone(9));  // the first block
    CHECK(InspectedObject().scripts == std::vector<std::wstring>{L"a", L"b"});
    CHECK(InspectedObject().scriptCount == 2);
    const auto isRemove = [](const HitZone& zone) { return zone.action == 9; };
    const auto first = std::ranges::find_if(editorState.inspectorZones, isRemove);
    const auto second = std::find_if(first + 1, editorState.inspectorZones.end(), isRemove);
    REQUIRE(second != editorState.inspectorZones.end());
    CHECK(PressInspector(MiddleOf(second->rect)));
    CHECK(InspectedObject().scripts == std::vector<std::wstring>{L"a"});
    CHECK(editorState.undoSteps.size() == 2);
}

TEST_CASE("a script that is only counted is counted down, to nothing") {
    OpenInspector({.hasShape = false, .scriptCount = 2});
    const Point first = MiddleOf(ZoneOf(9));
    CHECK(PressInspector(first));
    CHECK(InspectedObject().scriptCount == 1);
    CHECK(editorState.statusMessage == L"Posledni vlastni Script byl odebran.");
    CHECK(PressInspector(first));
    CHECK(InspectedObject().scriptCount == 0);
    CHECK(editorState.undoSteps.size() == 2);

    editorState.statusMessage = L"untouched";
    CHECK(PressInspector(first));
    CHECK(InspectedObject().scriptCount == 0);
    CHECK(editorState.statusMessage == L"untouched");
    CHECK(editorState.undoSteps.size() == 2);
}

TEST_CASE("a count that differs from the list is put right when the last script goes") {
    OpenInspector({.hasShape = false, .scriptCount = 9, .scripts = {L"a", L"b"}});
    CHECK(PressZone(9));
    CHECK(InspectedObject().scriptCount == 1);
}

TEST_CASE("in Play mode the Inspector edits as it does otherwise") {
    OpenInspector({.hasRigidbody = true});
    editorState.playMode = true;
    CHECK(PressZone(44));
    CHECK(InspectedObject().mass == 1.5f);
}
