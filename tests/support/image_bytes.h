// Image files for tests, as bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Pixels as 0xAARRGGBB, row 0 at the top.
struct TestImage {
    int32_t width = 0, height = 0;
    std::vector<uint32_t> argb{};
};

std::string PngBytes(const TestImage& image);
std::string JpegBytes(const TestImage& image);
std::string BmpBytes(const TestImage& image);  // without alpha
