// The world matrices of a scene, those of an earlier frame where nothing has moved since.
#pragma once

#include "scene/transform.h"
#include "state/cached_worlds.h"

#include <cstdint>
#include <span>

// The world matrices of a scene that does not change meanwhile. What `cached` holds of this or of any other
// scene is used as far as it still holds, bit for bit, and replaced where it does not.
class FrameWorlds {
public:
    FrameWorlds(std::span<const GameObject> scene, CachedWorlds& cached);

    // The same bits as WorldMatrix(scene, index). `index` names an object.
    const Matrix4& Of(int32_t index);

private:
    WorldMatrices computed;
    CachedWorlds& cached;
};
