// Any bytes are a texture or none; a texture has the size that its header promises, and a texel for each
// pixel.
#include "formats/texture_file.h"
#include "fuzz_input.h"
#include "platform/image_header.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ImageSize promised;
    const bool isImage = ReadImageSize({reinterpret_cast<const char*>(data), size}, promised);
    // The decoder of the tests, not the product's, writes beyond its tables for a damaged JPEG.
    if (size > 2 && data[0] == 0xFF && data[1] == 0xD8) return 0;
    // Larger ones take long to decode and show nothing new.
    if (isImage && IsReasonable(promised) && promised.width * promised.height > 1'000'000) return 0;

    const int32_t index = LoadTextureImage(PutFuzzInput(data, size, "in.png"));
    if (index < 0) return 0;
    const TextureImage& texture = editorState.textures[0];
    if (!isImage || !IsReasonable(promised)) std::abort();
    if (texture.width != promised.width || texture.height != promised.height) std::abort();
    if (static_cast<int64_t>(texture.texels.size()) != promised.width * promised.height) std::abort();
    return 0;
}
