// GIF and TIFF files for tests, as bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// One picture of at most four colours. Pixels are 0xRRGGBB, row 0 at the top.
std::string GifFile(int32_t width, int32_t height, const std::vector<uint32_t>& pixels);

// One picture without compression, in either byte order.
std::string TiffFile(int32_t width, int32_t height, const std::vector<uint32_t>& pixels, bool isBigEndian);
