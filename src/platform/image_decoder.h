// Image files to pixels: PNG, JPEG, BMP, GIF (the first picture) and TIFF (likewise), whatever their names
// say. The headless decoder reads no TIFF.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct DecodedImage {
    int32_t width = 0, height = 0;  // pixels, at least 1
    std::vector<uint32_t> argb{};   // 0xAARRGGBB, not premultiplied, row 0 at the top
};

constexpr int64_t kMaxImagePixels = 64'000'000;

// False when the file is missing, is no image, is empty on one side, or its header promises more than
// kMaxImagePixels; no memory is taken for those. `image` is then unchanged. A file that is cut short is
// refused, or read as far as it goes, as the decoder sees fit.
bool DecodeImageFile(const std::wstring& path, DecodedImage& image);
