#include "editor/component_search.h"

#include "render/builtin_meshes.h"
#include "scene/selection.h"
#include "scene/undo.h"
#include "support/capture.h"
#include "support/edited_scene.h"

#include "doctest/doctest.h"

#include <limits>

static const GameObject& AddedTo(const GameObject& object, int32_t action) {
    editorState = EditorState{};
    editorState.scene = {object};
    AddComponent(action);
    return editorState.scene[0];
}

TEST_CASE("every component command sets its fields, says so and is one undo step") {
    struct {
        int32_t action;
        GameObject added;
        const wchar_t* message;
    } cases[] = {
        {11, {.meshIndex = kCubeMesh}, L"Pridana vlastnost Shape: objekt dostal tvar."},
        {12, {.hasColor = true}, L"Pridan Color Script: objekt dostal barvu."},
        {13, {.hasAnimation = true}, L"Pridana vlastnost Animation: type rotation."},
        {14,
         {.scriptCount = 1, .scripts = {L"Custom Script 01"}},
         L"Pridan vlastni Script jako vlastnost objektu."},
        {33, {.hasCollision = true}, L"Pridana vlastnost Collision: objekt muze zastavit gravitation."},
        {34,
         {.hasCollision = true, .hasGravitation = true},
         L"Pridana vlastnost Gravitation: v Play mode objekt pada dolu a pouziva Collision."},
        {40,
         {.meshIndex = kCubeMesh, .hasTexture = true},
         L"Pridana vlastnost Texture. Pretahni PNG/JPG/BMP z Files na objekt."},
        {41,
         {.hasCollision = true, .hasRigidbody = true},
         L"Pridan Rigidbody: fyzikalni telo s kolizi, mass, drag a gravitaci."},
        {46,
         {.scriptCount = 1, .scripts = {L"CollectOnTouch"}, .hasCollision = true},
         L"Pridan CollectOnTouch. Pretahni .prefab z Files do Inspectoru."},
        {47,
         {.meshIndex = kCubeMesh, .scriptCount = 1, .scripts = {L"PlanePrefabSpawner"}, .hasCollision = true},
         L"Pridan PlanePrefabSpawner. Pretahni .prefab do Inspectoru, nebo pouzije prvni prefab ve Files."},
    };
    CHECK(ComponentCommands().size() == std::size(cases));
    for (const auto& [action, added, message] : cases) {
        CAPTURE(action);
        CHECK(AddedTo({}, action) == added);
        CHECK(editorState.statusMessage == message);
        CHECK(editorState.undoSteps.size() == 1);
        undo();
        CHECK(editorState.scene[0] == GameObject{});
    }
}

TEST_CASE("adding nothing to nobody says nothing") {
    for (const auto& [selected, action] : {std::pair{-1, 11}, {1, 11}, {0, 9}, {0, 0}, {0, -1}}) {
        editorState = EditorState{};
        editorState.scene.resize(1);
        editorState.selectedIndex = selected;
        editorState.statusMessage = L"before";
        CHECK_FALSE(AddComponent(action));
        CHECK(editorState.scene[0] == GameObject{});
        CHECK(editorState.undoSteps.empty());
        CHECK(editorState.statusMessage == L"before");
    }
}

TEST_CASE("a shape, a texture and a spawner keep the mesh that there is") {
    for (const int32_t action : {11, 40, 47}) {
        const GameObject& object = AddedTo({.meshIndex = kPlaneMesh, .hasShape = false}, action);
        CHECK(object.hasShape);
        CHECK(object.meshIndex == kPlaneMesh);
    }
}

TEST_CASE("a colour begins anew with its material and a small wheel") {
    const GameObject object{.color = 1, .roughness = 0, .gloss = 1, .colorWheelExpanded = true};
    CHECK(AddedTo(object, 12) == GameObject{.hasColor = true});
}

TEST_CASE("an animation begins anew as a rotation at speed one") {
    CHECK(AddedTo({.animationType = 2, .animationSpeed = 4}, 13) == GameObject{.hasAnimation = true});
}

TEST_CASE("custom scripts are numbered by the count of scripts") {
    CHECK(AddedTo({.scriptCount = 2, .scripts = {L"a", L"b"}}, 14).scripts.back() == L"Custom Script 03");
    CHECK(AddedTo({.scriptCount = 99}, 14).scripts.back() == L"Custom Script 100");
    CHECK(editorState.scene[0].scriptCount == 1);
    CHECK(AddedTo({.scriptCount = INT32_MAX}, 14).scripts.size() == 1);
}

TEST_CASE("gravitation opens the Collision section too and starts at rest") {
    const GameObject object{
        .collisionExpanded = false, .gravitationExpanded = false, .velocityY = -5, .gravityStrength = 4};
    CHECK(AddedTo(object, 34) == GameObject{.hasCollision = true, .hasGravitation = true});
}

TEST_CASE("a rigidbody limits mass and drag, stands still and leaves gravitation as it is") {
    const GameObject& heavy = AddedTo({.gravityStrength = 4, .mass = 0, .drag = 3, .velocity{1, 2, 3}}, 41);
    CHECK(heavy.mass == 0.1f);
    CHECK(heavy.drag == 1);
    CHECK(heavy.velocity == Vec3{});
    CHECK(heavy.gravityStrength == 9.8f);
    CHECK_FALSE(heavy.hasGravitation);
    CHECK(AddedTo({.mass = 7, .drag = -1}, 41).mass == 7);
    CHECK(editorState.scene[0].drag == 0);
    CHECK(AddedTo({.mass = std::numeric_limits<float>::quiet_NaN()}, 41).mass == 0.1f);
}

TEST_CASE("a texture and a rigidbody open their sections") {
    CHECK(AddedTo({.textureExpanded = false}, 40).textureExpanded);
    CHECK(AddedTo({.rigidbodyExpanded = false}, 41).rigidbodyExpanded);
}

TEST_CASE("collecting and spawning open the Collision section") {
    for (const int32_t action : {33, 41, 46, 47}) {
        CHECK(AddedTo({.collisionExpanded = false}, action).collisionExpanded);
    }
}
