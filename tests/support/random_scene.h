// Random triangles and objects for property tests.
#pragma once

#include "render/raster/camera.h"

#include <array>
#include <cstdint>
#include <random>

class RandomSource {
public:
    explicit RandomSource(uint32_t seed) : engine(seed) {}

    float Between(float low, float high) {
        return low + (high - low) * (static_cast<float>(engine() >> 8) / 16777215.0f);
    }
    int32_t IntBetween(int32_t low, int32_t high) {
        return low + static_cast<int32_t>(engine() % static_cast<uint32_t>(high - low + 1));
    }
    bool OneIn(uint32_t n) { return engine() % n == 0; }
    uint32_t Bits() { return engine(); }

private:
    std::mt19937 engine;
};

// Corners around a picture of the given size: small and huge triangles, slivers, corners on pixel centres and
// edges.
inline std::array<ScreenCorner, 3> RandomTriangle(RandomSource& random, float width, float height) {
    const float reach = random.OneIn(8) ? 100000.0f : random.OneIn(3) ? 6.0f : 1.5f * width;
    const float centreX = random.Between(-10, width + 10), centreY = random.Between(-10, height + 10);
    const bool snapped = random.OneIn(3), flat = random.OneIn(4);
    const float level = random.Between(-0.2f, 1.2f);
    std::array<ScreenCorner, 3> corners;
    for (ScreenCorner& corner : corners) {
        corner.x = centreX + random.Between(-reach, reach);
        corner.y = centreY + random.Between(-reach, reach);
        if (snapped) {
            corner.x = static_cast<float>(static_cast<int32_t>(corner.x * 2)) * 0.5f;
            corner.y = static_cast<float>(static_cast<int32_t>(corner.y * 2)) * 0.5f;
        }
        corner.depth = flat ? level : random.Between(-0.1f, 1.1f);
        corner.inverseW = random.OneIn(10) ? random.Between(-1e-6f, 1e-6f) : random.Between(0.01f, 10);
    }
    return corners;
}
