#include "render/raster/surface.h"

#include "base/limit.h"

#include <algorithm>
#include <cmath>

constexpr float kAmbient = 0.3f;
constexpr Pixel kWhite{0xFFFFFF};

float Brightness(float lightCosine, float halfwayCosine, float roughness, float gloss) {
    const float diffuse = std::max(lightCosine, 0.0f), specular = std::max(halfwayCosine, 0.0f);
    return kAmbient + (0.62f - 0.12f * roughness) * diffuse +
           gloss * (1.15f - 0.55f * roughness) * std::pow(specular, (1 - roughness) * 72 + 8);
}

float FaceBrightness(Vec3 normal, Vec3 toEye, Vec3 light, float roughness, float gloss) {
    return Brightness(Dot(normal, light), Dot(normal, Normalise(light + toEye)), roughness, gloss);
}

Pixel Tinted(Pixel color, uint32_t tint) {
    if (tint == 0) return color;
    const auto c = static_cast<uint32_t>(color);
    // The halves of what differs, without a carry from one channel into the next.
    return Pixel{((c & tint) + (((c ^ tint) & 0xFEFEFE) >> 1)) & 0xFFFFFF};
}

Pixel Lit(Pixel color, float brightness) {
    const float factor = Limit(brightness, kDarkest, kBrightest);
    const auto c = static_cast<uint32_t>(color);
    const auto channel = [c, factor](int shift) {
        const float lit = static_cast<float>(c >> shift & 0xFF) * factor;
        return static_cast<uint32_t>(std::min(lit, 255.0f)) << shift;
    };
    return Pixel{channel(16) | channel(8) | channel(0)};
}

static float Wrapped(float coordinate, bool repeat) {
    return Limit(repeat ? coordinate - std::floor(coordinate) : coordinate, 0.0f, 1.0f);
}

Pixel SampleTexture(const TextureImage& texture, float u, float v, bool repeat) {
    if (texture.texels.empty()) return kWhite;
    const float across = Wrapped(u, repeat) * static_cast<float>(texture.width - 1);
    const float down = (1 - Wrapped(v, repeat)) * static_cast<float>(texture.height - 1);
    const int32_t column = std::clamp(static_cast<int32_t>(across), 0, texture.width - 1);
    const int32_t row = std::clamp(static_cast<int32_t>(down), 0, texture.height - 1);
    return texture
        .texels[static_cast<size_t>(row) * static_cast<size_t>(texture.width) + static_cast<size_t>(column)];
}
