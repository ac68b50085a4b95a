#include "editor/component_blocks.h"

#include "base/limit.h"
#include "base/numbers.h"

#include <limits>

constexpr float kEarthGravity = 9.8f;  // world units per second squared
constexpr float kMinMass = 0.1f;

// Collision.

void AddCollision(GameObject& object) {
    object.hasCollision = true;
    object.collisionExpanded = true;
}

// clang-format off
constexpr InspectorRow kCollisionRows[] = {
    {34, L"Type",  0, L"Box"},
    {62, L"Solid", 0, L"true"},
};
constexpr InspectorAction kCollisionActions[] = {
    {29, kNoUndo, &GameObject::collisionExpanded, OnOffMessage{L"Collision rozbalena.", L"Collision sbalena."}},
    {30, "Remove collision", [](Edited o, Press) { o.hasCollision = false; }, L"Collision byla odebrana."},
};
// clang-format on
constexpr Component kCollisionBlock{
    .isPresent = Has<&GameObject::hasCollision>,
    .fold = 29,
    .remove = 30,
    .look = {L"Collision", 92, kCollisionRows},
    .actions = kCollisionActions,
    .adding = {L"Collision", L"collision collider coll kolize solid", 33, "Add collision", AddCollision,
               L"Pridana vlastnost Collision: objekt muze zastavit gravitation."}};
static_assert(IsSound(kCollisionBlock));

// Gravitation.

static void AddGravitation(GameObject& object) {
    AddCollision(object);
    object.hasGravitation = true;
    object.gravitationExpanded = true;
    object.gravityStrength = kEarthGravity;
    object.velocityY = 0;
}

// clang-format off
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
// clang-format on
constexpr Component kGravitationBlock{
    .isPresent = Has<&GameObject::hasGravitation>,
    .fold = 31,
    .remove = 32,
    .look = {L"Gravitation", 92, kGravitationRows},
    .actions = kGravitationActions,
    .adding = {L"Gravitation", L"gravity gravitation grav gravitace fall", 34, "Add gravity", AddGravitation,
               L"Pridana vlastnost Gravitation: v Play mode objekt pada dolu a pouziva Collision."}};
static_assert(IsSound(kGravitationBlock));

// Rigidbody.

static void AddRigidbody(GameObject& object) {
    AddCollision(object);
    object.hasRigidbody = true;
    object.rigidbodyExpanded = true;
    object.gravityStrength = kEarthGravity;
    object.mass = Limit(object.mass, kMinMass, std::numeric_limits<float>::infinity());
    object.drag = Limit(object.drag, 0.0f, 1.0f);
    object.velocity = {};
}

// clang-format off
constexpr InspectorRow kRigidbodyRows[] = {
    {34, L"Mass",       44, &GameObject::mass},
    {62, L"Drag",       45, &GameObject::drag},
    {90, L"Velocity Y",  0, [](SeenObject o) { return Fixed(o.velocity.y, 2); }},
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
// clang-format on
constexpr Component kRigidbodyBlock{
    .isPresent = Has<&GameObject::hasRigidbody>,
    .fold = 42,
    .remove = 43,
    .look = {L"Rigidbody", 120, kRigidbodyRows},
    .actions = kRigidbodyActions,
    .adding = {L"Rigidbody", L"rigidbody physics body fyzika mass drag", 41, "Add rigidbody", AddRigidbody,
               L"Pridan Rigidbody: fyzikalni telo s kolizi, mass, drag a gravitaci."}};
static_assert(IsSound(kRigidbodyBlock));
