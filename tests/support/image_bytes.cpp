#include "support/image_bytes.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include "stb/stb_image_write.h"
#pragma GCC diagnostic pop

static std::vector<uint8_t> Channels(const TestImage& image, bool withAlpha) {
    std::vector<uint8_t> bytes;
    for (uint32_t pixel : image.argb) {
        for (int shift : {16, 8, 0}) bytes.push_back(static_cast<uint8_t>(pixel >> shift));
        if (withAlpha) bytes.push_back(static_cast<uint8_t>(pixel >> 24));
    }
    return bytes;
}

static void Append(void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data), static_cast<size_t>(size));
}

std::string PngBytes(const TestImage& image) {
    std::string bytes;
    stbi_write_png_to_func(Append, &bytes, image.width, image.height, 4, Channels(image, true).data(),
                           image.width * 4);
    return bytes;
}

std::string JpegBytes(const TestImage& image) {
    std::string bytes;
    stbi_write_jpg_to_func(Append, &bytes, image.width, image.height, 3, Channels(image, false).data(), 100);
    return bytes;
}

std::string BmpBytes(const TestImage& image) {
    std::string bytes;
    stbi_write_bmp_to_func(Append, &bytes, image.width, image.height, 3, Channels(image, false).data());
    return bytes;
}
