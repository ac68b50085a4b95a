// One thing in a scene: a flat record of its transform, its components and its Inspector folds.
#pragma once

#include "base/vec3.h"

#include <cstdint>
#include <string>
#include <vector>

// Copied by value for undo, Play mode, the clipboard and prefabs. Its index in the scene is its identity; it
// refers to other objects by such an index or by name. Colours are 0x00BBGGRR, red in the low byte.
struct GameObject {
    std::wstring name{};            // shown in the Hierarchy; look-ups by name take the first match
    Vec3 position{};                // world units, relative to the parent when there is one
    Vec3 rotation{};                // radians about x, y and z
    Vec3 scale{1, 1, 1};            // factor per axis
    int32_t meshIndex = -1;         // into EditorState::meshes; -1 without a mesh
    bool hasAnimation = false;      // Animation component present
    int32_t parentIndex = -1;       // index of the parent in the same scene; -1 for a root
    bool isEntity = false;          // a point marker: only a name and coordinates in the Inspector
    bool isCamera = false;          // a camera
    bool isLight = false;           // a light, working as a sun for the scene
    bool hasShape = true;           // Shape component present: the mesh is drawn
    bool hasColor = false;          // Color Script component present: the mesh is tinted with `color`
    bool transformExpanded = true;  // Inspector folds: true is open
    bool shapeExpanded = true;
    bool colorExpanded = true;
    bool animationExpanded = true;
    int32_t animationType = 0;            // 0 rotation, 1 pulse, 2 bounce
    float animationSpeed = 1.0f;          // factor, 0.5 .. 4 by clicks
    int32_t scriptCount = 0;              // the size of `scripts`, kept equal by whatever changes the list
    uint32_t color = 0xC4CD4E;            // 0x00BBGGRR; 0 means no tint
    std::vector<std::wstring> scripts{};  // script names; gameplay components are found by their name here
    float roughness = 0.72f;              // 0 .. 1
    float gloss = 0.18f;                  // 0 .. 1
    bool colorWheelExpanded = false;      // Color Script shows the large wheel
    bool hasCollision = false;            // Collision component present: the object is solid
    bool hasGravitation = false;          // Gravitation component present
    bool collisionExpanded = true;
    bool gravitationExpanded = true;
    float velocityY = 0;           // world units per second; state of Play mode
    float gravityStrength = 9.8f;  // world units per second squared
    bool hasTexture = false;       // Texture component present
    bool textureExpanded = true;
    bool textureRepeat = false;  // true tiles the image, false stretches it
    int32_t textureIndex = -1;   // into EditorState::textures; -1 not loaded; never stored in a file
    std::wstring texturePath{};  // the image file; empty without one
    bool hasRigidbody = false;   // Rigidbody component present
    bool rigidbodyExpanded = true;
    float mass = 1.0f;             // at least 0.1 once the component is there
    float drag = 0.05f;            // per second, 0 .. 1 in the editor; files up to 5
    Vec3 velocity{};               // world units per second; state of Play mode
    bool active = true;            // inactive objects are not drawn, not solid and not collected
    std::wstring collectTarget{};  // CollectOnTouch: name of the object to collect
    std::wstring collectPrefab{};  // CollectOnTouch: .prefab whose instances are collected
    std::wstring prefabSource{};   // .prefab this object was made from
    std::wstring spawnerPrefab{};  // PlanePrefabSpawner: .prefab to spawn
    bool cameraExpanded = true;
    bool cameraBackgroundSet = false;      // a background colour was chosen; shows the large wheel
    uint32_t cameraBackground = 0x2D2219;  // 0x00BBGGRR
    float cameraBrightness = 1.0f;         // factor on the background, 0 .. 1
    bool isText = false;                   // a text shown at its position
    bool textExpanded = true;
    std::wstring text = L"Text";  // what a Text object shows
    float textSize = 18.0f;       // pixels, 4 .. 180

    friend bool operator==(const GameObject&, const GameObject&) = default;
};

// In Hierarchy order.
using Scene = std::vector<GameObject>;
