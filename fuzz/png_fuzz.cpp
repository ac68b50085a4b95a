// Any bytes are a picture of as many pixels as its sides say, or none.
#include "render/png_file.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    DecodedImage image;
    if (!ReadPngFile({reinterpret_cast<const char*>(data), size}, image)) return 0;
    const auto width = static_cast<size_t>(image.width), height = static_cast<size_t>(image.height);
    if (image.width < 1 || image.height < 1 || image.argb.size() != width * height) std::abort();
    return 0;
}
