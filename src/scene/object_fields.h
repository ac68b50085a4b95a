// The fields of an object as a list, for what must not forget one.
#pragma once

#include "state/game_object.h"

#include <string_view>
#include <tuple>

// All fields, in their order. A macro, because the same list unpacks an object and packs it again.
#define ZEL_OBJECT_FIELDS                                                                                 \
    name, position, rotation, scale, meshIndex, hasAnimation, parentIndex, isEntity, isCamera, isLight,   \
        hasShape, hasColor, transformExpanded, shapeExpanded, colorExpanded, animationExpanded,           \
        animationType, animationSpeed, scriptCount, color, scripts, roughness, gloss, colorWheelExpanded, \
        hasCollision, hasGravitation, collisionExpanded, gravitationExpanded, velocityY, gravityStrength, \
        hasTexture, textureExpanded, textureRepeat, textureIndex, texturePath, hasRigidbody,              \
        rigidbodyExpanded, mass, drag, velocity, active, collectTarget, collectPrefab, prefabSource,      \
        spawnerPrefab, cameraExpanded, cameraBackgroundSet, cameraBackground, cameraBrightness, isText,   \
        textExpanded, text, textSize

#define ZEL_TEXT(...) #__VA_ARGS__
#define ZEL_TEXT_OF(...) ZEL_TEXT(__VA_ARGS__)

// Their names, with a comma and a space between them.
inline constexpr std::string_view kObjectFieldNames = ZEL_TEXT_OF(ZEL_OBJECT_FIELDS);

// References to all fields of a GameObject, const or not. A field that is added to the record does not
// compile here until it is listed, and what is listed is compared by undo and asked for by the tests of the
// object line and of the Inspector.
template <typename Object>
constexpr auto FieldsOf(Object& object) {
    auto& [ZEL_OBJECT_FIELDS] = object;
    return std::tie(ZEL_OBJECT_FIELDS);
}

#undef ZEL_OBJECT_FIELDS
#undef ZEL_TEXT
#undef ZEL_TEXT_OF

// True when every field is alike and every float has the same bits. Unlike ==, 0 and -0 differ, as they do in
// a file, and a field that is not a number equals itself.
bool SameBits(const GameObject& a, const GameObject& b);

// Like `SameBits`, but the parent index may differ.
bool SameBitsButParent(const GameObject& a, const GameObject& b);
