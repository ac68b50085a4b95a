#include "scene/same_object.h"

#include <bit>
#include <tuple>
#include <utility>

// All but the parent index. A field that is added to the record does not compile here until it is compared.
static auto FieldsButParent(const GameObject& object) {
    const auto& [name, position, rotation, scale, meshIndex, hasAnimation, parentIndex, isEntity, isCamera,
                 isLight, hasShape, hasColor, transformExpanded, shapeExpanded, colorExpanded,
                 animationExpanded, animationType, animationSpeed, scriptCount, color, scripts, roughness,
                 gloss, colorWheelExpanded, hasCollision, hasGravitation, collisionExpanded,
                 gravitationExpanded, velocityY, gravityStrength, hasTexture, textureExpanded, textureRepeat,
                 textureIndex, texturePath, hasRigidbody, rigidbodyExpanded, mass, drag, velocity, active,
                 collectTarget, collectPrefab, prefabSource, spawnerPrefab, cameraExpanded,
                 cameraBackgroundSet, cameraBackground, cameraBrightness, isText, textExpanded, text,
                 textSize] = object;
    return std::tie(name, position, rotation, scale, meshIndex, hasAnimation, isEntity, isCamera, isLight,
                    hasShape, hasColor, transformExpanded, shapeExpanded, colorExpanded, animationExpanded,
                    animationType, animationSpeed, scriptCount, color, scripts, roughness, gloss,
                    colorWheelExpanded, hasCollision, hasGravitation, collisionExpanded, gravitationExpanded,
                    velocityY, gravityStrength, hasTexture, textureExpanded, textureRepeat, textureIndex,
                    texturePath, hasRigidbody, rigidbodyExpanded, mass, drag, velocity, active, collectTarget,
                    collectPrefab, prefabSource, spawnerPrefab, cameraExpanded, cameraBackgroundSet,
                    cameraBackground, cameraBrightness, isText, textExpanded, text, textSize);
}

template <typename Field>
static bool SameField(const Field& a, const Field& b) {
    return a == b;
}

static bool SameField(float a, float b) { return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b); }

static bool SameField(const Vec3& a, const Vec3& b) {
    return SameField(a.x, b.x) && SameField(a.y, b.y) && SameField(a.z, b.z);
}

bool SameBitsButParent(const GameObject& a, const GameObject& b) {
    const auto left = FieldsButParent(a), right = FieldsButParent(b);
    return [&]<size_t... i>(std::index_sequence<i...>) {
        return (SameField(std::get<i>(left), std::get<i>(right)) && ...);
    }
    (std::make_index_sequence<std::tuple_size_v<decltype(left)>>{});
}

bool SameBits(const GameObject& a, const GameObject& b) {
    return a.parentIndex == b.parentIndex && SameBitsButParent(a, b);
}
