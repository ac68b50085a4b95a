// World matrices as an earlier frame left them.
#pragma once

#include "base/matrix4.h"

#include <cstdint>
#include <vector>

// What a world matrix was made from, and the matrix.
struct CachedWorld {
    Vec3 position{}, rotation{}, scale{};
    int32_t parent = -1;
    bool isFresh = false;  // `world` is up to date
    Matrix4 world{};
};

// By object. See scene/world_cache.h.
struct CachedWorlds {
    std::vector<CachedWorld> objects{};
};
