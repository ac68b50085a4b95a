#include "platform/image_decoder.h"

#include "platform/files.h"
#include "platform/image_header.h"

#include <cstdlib>

// The library asks for what a file's blocks promise before it looks whether the file holds so much. No image
// that is let in needs more than this at once: 4 bytes for each of its pixels, and a filter byte per row.
static constexpr size_t kMostBytesAtOnce = 1 << 29;

static void* Allocate(size_t size) { return size <= kMostBytesAtOnce ? std::malloc(size) : nullptr; }

static void* Reallocate(void* memory, size_t size) {
    return size <= kMostBytesAtOnce ? std::realloc(memory, size) : nullptr;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wfloat-conversion"
#ifdef __clang__  // it copies nothing from nowhere for some damaged files, which is no fault of ours
#pragma clang attribute push(__attribute__((no_sanitize("undefined"))), apply_to = function)
#endif
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_ONLY_GIF
#define STBI_NO_STDIO
#define STBI_MALLOC Allocate
#define STBI_REALLOC Reallocate
#define STBI_FREE std::free
#include "stb/stb_image.h"
#ifdef __clang__
#pragma clang attribute pop
#endif
#pragma GCC diagnostic pop

#include <memory>
#include <new>
#include <string>

static uint32_t ArgbOf(const stbi_uc* rgba) {
    return static_cast<uint32_t>(rgba[3]) << 24 | static_cast<uint32_t>(rgba[0]) << 16 |
           static_cast<uint32_t>(rgba[1]) << 8 | rgba[2];
}

bool DecodeImageFile(const std::wstring& path, DecodedImage& image) {
    std::string bytes;
    if (!ReadWholeFile(path, bytes) || bytes.size() > INT32_MAX) return false;
    ImageSize promised;
    if (!ReadImageSize(bytes, promised) || !IsReasonable(promised)) return false;

    const auto* data = reinterpret_cast<const stbi_uc*>(bytes.data());
    const auto size = static_cast<int>(bytes.size());

    int width = 0, height = 0, channels = 0;
    if (stbi_info_from_memory(data, size, &width, &height, &channels) == 0) return false;
    // It says of a BMP whose rows run from the top that its height is negative.
    if (promised != ImageSize{width, std::abs(int64_t{height})}) return false;

    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> rgba(
        stbi_load_from_memory(data, size, &width, &height, &channels, 4), stbi_image_free);
    if (rgba == nullptr) return false;

    DecodedImage decoded{.width = width, .height = height};
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    try {
        decoded.argb.resize(count);
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (size_t i = 0; i < count; ++i) decoded.argb[i] = ArgbOf(rgba.get() + 4 * i);
    image = std::move(decoded);
    return true;
}
