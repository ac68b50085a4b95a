// What the header of an image file promises, told before any memory is taken for its pixels.
#pragma once

#include "platform/image_decoder.h"

#include <cstdint>
#include <string_view>

struct ImageSize {
    int64_t width = 0, height = 0;  // pixels

    friend constexpr bool operator==(const ImageSize&, const ImageSize&) = default;
};

// The size of a PNG, JPEG, BMP, GIF or TIFF file, by what it begins with. Of a GIF the size that all its
// pictures share, of a TIFF that of its first picture; but where one of its pictures or tiles is larger than
// any image may be, the size of that. False, with `size` unchanged, for anything else and for a header that
// is cut short.
bool ReadImageSize(std::string_view bytes, ImageSize& size);

// True for an image that has pixels, and no more than kMaxImagePixels.
bool IsReasonable(const ImageSize& size);
