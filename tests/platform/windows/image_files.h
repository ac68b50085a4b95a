// Small image files made by a test, byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A PNG of `rows` (top to bottom), each the packed samples of one row. `colorType` as in the format: 0 grey,
// 6 red, green, blue, alpha.
std::string PngFile(uint32_t width, uint32_t height, uint8_t bitDepth, uint8_t colorType,
                    const std::vector<std::string>& rows);

// A BMP of 24 bits a pixel; `pixels` 0x00RRGGBB from the top left.
std::string BmpFile(int32_t width, int32_t height, const std::vector<uint32_t>& pixels);
