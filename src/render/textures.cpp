#include "render/textures.h"

#include "platform/files.h"
#include "platform/image_decoder.h"
#include "scene/editor_state.h"

#include <algorithm>

constexpr Pixel kTransparentTexel{0xFFFFFF};

// The reverse of the frame buffer's order: red in the low byte.
static Pixel TexelOf(uint32_t argb) {
    const uint32_t alpha = argb >> 24, red = argb >> 16 & 0xFF, green = argb >> 8 & 0xFF, blue = argb & 0xFF;
    return alpha == 0 ? kTransparentTexel : Pixel{red | green << 8 | blue << 16};
}

int32_t LoadTextureImage(const std::wstring& path) {
    auto& textures = editorState.textures;
    const std::wstring fullPath = AbsolutePath(path);
    const auto loaded = std::ranges::find(textures, fullPath, &TextureImage::path);
    if (loaded != textures.end()) return static_cast<int32_t>(loaded - textures.begin());

    DecodedImage image;
    if (!DecodeImageFile(fullPath, image)) {
        editorState.statusMessage = L"Texture image se nepodarilo nacist.";
        return -1;
    }
    TextureImage texture{.path = fullPath, .width = image.width, .height = image.height};
    texture.texels.resize(image.argb.size());
    std::ranges::transform(image.argb, texture.texels.begin(), TexelOf);
    textures.push_back(std::move(texture));
    return static_cast<int32_t>(textures.size()) - 1;
}
