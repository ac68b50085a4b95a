// A texture as the rasterizer samples it.
#pragma once

#include "base/color.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Nobody looks into one: its place in memory tells textures apart.
struct TextureMark {};

// Red and blue are exchanged against the image file, and fully transparent pixels are white: the texels are
// copied into frame buffer pixels as they stand.
struct TextureImage {
    std::wstring path{};            // full path; one image per file
    int32_t width = 0, height = 0;  // pixels, at least 1 once loaded
    std::vector<Pixel> texels{};    // width x height, row 0 at the top
    // The same for copies of a texture and for no other texture, as long as somebody holds it. Null: not
    // known.
    std::shared_ptr<const TextureMark> identity{};
};
