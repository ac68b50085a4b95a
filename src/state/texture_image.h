// A texture as the rasterizer samples it.
#pragma once

#include "base/color.h"

#include <cstdint>
#include <string>
#include <vector>

// Red and blue are exchanged against the image file, and fully transparent pixels are white: the texels are
// copied into frame buffer pixels as they stand.
struct TextureImage {
    std::wstring path{};            // full path; one image per file
    int32_t width = 0, height = 0;  // pixels, at least 1 once loaded
    std::vector<Pixel> texels{};    // width x height, row 0 at the top
};
