#include "state/game_object.h"

#include "doctest/doctest.h"

#include <utility>

// A field that is added to the record does not compile here until it is tested.
TEST_CASE("a new object has every fold open, a shape without a mesh and nothing else") {
    const GameObject object;
    const auto& [name, position, rotation, scale, meshIndex, hasAnimation, parentIndex, isEntity, isCamera,
                 isLight, hasShape, hasColor, transformExpanded, shapeExpanded, colorExpanded,
                 animationExpanded, animationType, animationSpeed, scriptCount, color, scripts, roughness,
                 gloss, colorWheelExpanded, hasCollision, hasGravitation, collisionExpanded,
                 gravitationExpanded, velocityY, gravityStrength, hasTexture, textureExpanded, textureRepeat,
                 textureIndex, texturePath, hasRigidbody, rigidbodyExpanded, mass, drag, velocity, active,
                 collectTarget, collectPrefab, prefabSource, spawnerPrefab, cameraExpanded,
                 cameraBackgroundSet, cameraBackground, cameraBrightness, isText, textExpanded, text,
                 textSize] = object;
    CHECK(name == L"");
    CHECK(position == Vec3{0, 0, 0});
    CHECK(rotation == Vec3{0, 0, 0});
    CHECK(scale == Vec3{1, 1, 1});
    CHECK(meshIndex == -1);
    CHECK(hasAnimation == false);
    CHECK(parentIndex == -1);
    CHECK(isEntity == false);
    CHECK(isCamera == false);
    CHECK(isLight == false);
    CHECK(hasShape == true);
    CHECK(hasColor == false);
    CHECK(transformExpanded == true);
    CHECK(shapeExpanded == true);
    CHECK(colorExpanded == true);
    CHECK(animationExpanded == true);
    CHECK(animationType == 0);
    CHECK(animationSpeed == 1.0f);
    CHECK(scriptCount == 0);
    CHECK(color == 0xC4CD4E);
    CHECK(scripts.empty());
    CHECK(roughness == 0.72f);
    CHECK(gloss == 0.18f);
    CHECK(colorWheelExpanded == false);
    CHECK(hasCollision == false);
    CHECK(hasGravitation == false);
    CHECK(collisionExpanded == true);
    CHECK(gravitationExpanded == true);
    CHECK(velocityY == 0);
    CHECK(gravityStrength == 9.8f);
    CHECK(hasTexture == false);
    CHECK(textureExpanded == true);
    CHECK(textureRepeat == false);
    CHECK(textureIndex == -1);
    CHECK(texturePath == L"");
    CHECK(hasRigidbody == false);
    CHECK(rigidbodyExpanded == true);
    CHECK(mass == 1.0f);
    CHECK(drag == 0.05f);
    CHECK(velocity == Vec3{0, 0, 0});
    CHECK(active == true);
    CHECK(collectTarget == L"");
    CHECK(collectPrefab == L"");
    CHECK(prefabSource == L"");
    CHECK(spawnerPrefab == L"");
    CHECK(cameraExpanded == true);
    CHECK(cameraBackgroundSet == false);
    CHECK(cameraBackground == 0x2D2219);
    CHECK(cameraBrightness == 1.0f);
    CHECK(isText == false);
    CHECK(textExpanded == true);
    CHECK(text == L"Text");
    CHECK(textSize == 18.0f);
}

TEST_CASE("a copied object owns its texts, and a moved one leaves them empty") {
    GameObject object{.name = std::wstring(100, L'n'), .scripts = {std::wstring(100, L's')}};
    const GameObject copy = object;
    object.name[0] = L'x';
    object.scripts[0][0] = L'x';
    CHECK(copy.name == std::wstring(100, L'n'));
    CHECK(copy.scripts[0] == std::wstring(100, L's'));

    const GameObject taken = std::move(object);
    CHECK(taken.scripts.size() == 1);
    CHECK(object.name.empty());     // NOLINT(bugprone-use-after-move)
    CHECK(object.scripts.empty());  // NOLINT(bugprone-use-after-move)
}
