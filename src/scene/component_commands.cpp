#include "scene/component_commands.h"

#include "base/limit.h"
#include "base/numbers.h"
#include "render/builtin_meshes.h"
#include "scene/gameplay_scripts.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <iterator>
#include <limits>

constexpr float kEarthGravity = 9.8f;  // world units per second squared
constexpr float kMinMass = 0.1f;

static void AppendScript(GameObject& object, const std::wstring& name) {
    object.scripts.push_back(name);
    object.scriptCount = static_cast<int32_t>(object.scripts.size());
}

static void AddShape(GameObject& object) {
    object.hasShape = true;
    if (object.meshIndex < 0) object.meshIndex = kCubeMesh;
}

static void AddColor(GameObject& object) {
    object.hasColor = true;
    object.color = 0xC4CD4E;
    object.roughness = 0.72f;
    object.gloss = 0.18f;
    object.colorWheelExpanded = false;
}

static void AddAnimation(GameObject& object) {
    object.hasAnimation = true;
    object.animationType = 0;
    object.animationSpeed = 1.0f;
}

static void AddScript(GameObject& object) {
    // The count comes from a file and may be anything.
    const int32_t number = std::min(object.scriptCount, std::numeric_limits<int32_t>::max() - 1) + 1;
    AppendScript(object, L"Custom Script " + Padded(number, 2));
}

static void AddCollision(GameObject& object) {
    object.hasCollision = true;
    object.collisionExpanded = true;
}

static void AddGravitation(GameObject& object) {
    AddCollision(object);
    object.hasGravitation = true;
    object.gravitationExpanded = true;
    object.gravityStrength = kEarthGravity;
    object.velocityY = 0;
}

static void AddTexture(GameObject& object) {
    AddShape(object);
    object.hasTexture = true;
    object.textureExpanded = true;
}

static void AddRigidbody(GameObject& object) {
    AddCollision(object);
    object.hasRigidbody = true;
    object.rigidbodyExpanded = true;
    object.gravityStrength = kEarthGravity;
    object.mass = Limit(object.mass, kMinMass, std::numeric_limits<float>::infinity());
    object.drag = Limit(object.drag, 0.0f, 1.0f);
    object.velocity = {};
}

static void AddCollectOnTouch(GameObject& object) {
    AddCollision(object);
    AppendScript(object, kCollectOnTouch);
}

static void AddPlanePrefabSpawner(GameObject& object) {
    AddShape(object);
    AddCollision(object);
    AppendScript(object, kPlanePrefabSpawner);
}

// clang-format off
constexpr ComponentCommand kComponentCommands[] = {
    {L"Rigidbody", L"rigidbody physics body fyzika mass drag",
     41, "Add rigidbody", AddRigidbody,
     L"Pridan Rigidbody: fyzikalni telo s kolizi, mass, drag a gravitaci."},
    {L"Shape", L"shape mesh object cube sphere capsule cylinder plane",
     11, "Add shape", AddShape,
     L"Pridana vlastnost Shape: objekt dostal tvar."},
    {L"Color", L"color colour barva material",
     12, "Add color", AddColor,
     L"Pridan Color Script: objekt dostal barvu."},
    {L"Animation", L"animation rotate rotace pohyb",
     13, "Add animation", AddAnimation,
     L"Pridana vlastnost Animation: type rotation."},
    {L"Script", L"script code cpp player controller",
     14, "Add script", AddScript,
     L"Pridan vlastni Script jako vlastnost objektu."},
    {L"CollectOnTouch", L"collect pickup score touch collision score +1",
     46, "Add CollectOnTouch", AddCollectOnTouch,
     L"Pridan CollectOnTouch. Pretahni .prefab z Files do Inspectoru."},
    {L"PlanePrefabSpawner", L"plane prefab spawn random povrch plocha",
     47, "Add PlanePrefabSpawner", AddPlanePrefabSpawner,
     L"Pridan PlanePrefabSpawner. Pretahni .prefab do Inspectoru, nebo pouzije prvni prefab ve Files."},
    {L"Texture", L"texture image obrazek png jpg material",
     40, "Add texture", AddTexture,
     L"Pridana vlastnost Texture. Pretahni PNG/JPG/BMP z Files na objekt."},
    {L"Collision", L"collision collider coll kolize solid",
     33, "Add collision", AddCollision,
     L"Pridana vlastnost Collision: objekt muze zastavit gravitation."},
    {L"Gravitation", L"gravity gravitation grav gravitace fall",
     34, "Add gravity", AddGravitation,
     L"Pridana vlastnost Gravitation: v Play mode objekt pada dolu a pouziva Collision."},
};
// clang-format on

static consteval bool ActionsAreUnique() {
    for (const ComponentCommand& a : kComponentCommands) {
        for (const ComponentCommand& b : kComponentCommands) {
            if (&a != &b && a.action == b.action) return false;
        }
    }
    return true;
}
static_assert(ActionsAreUnique());

std::span<const ComponentCommand> ComponentCommands() { return kComponentCommands; }

bool AddComponent(int32_t action) {
    if (!SelectionIsValid()) return false;
    const auto command = std::ranges::find(kComponentCommands, action, &ComponentCommand::action);
    if (command == std::end(kComponentCommands)) return false;

    pushUndo(command->undoLabel);
    command->add(SelectedObject());
    SetStatus(command->message);
    return true;
}
