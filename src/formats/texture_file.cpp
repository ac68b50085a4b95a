#include "formats/texture_file.h"

#include "base/enough_memory.h"
#include "platform/files.h"
#include "platform/image_decoder.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

constexpr Pixel kTransparentTexel{0xFFFFFF};

// The reverse of the frame buffer's order: red in the low byte.
static Pixel TexelOf(uint32_t argb) {
    const uint32_t alpha = argb >> 24, red = argb >> 16 & 0xFF, green = argb >> 8 & 0xFF, blue = argb & 0xFF;
    return alpha == 0 ? kTransparentTexel : Pixel{red | green << 8 | blue << 16};
}

// Converted once on loading: what the rasterizer samples goes into the frame buffer as it stands.
bool ReadTextureFile(const std::wstring& fullPath, TextureImage& texture) {
    DecodedImage image;
    if (!DecodeImageFile(fullPath, image)) return false;
    return WithEnoughMemory([&] {
        std::vector<Pixel> texels(image.argb.size());
        std::ranges::transform(image.argb, texels.begin(), TexelOf);
        texture = {fullPath, image.width, image.height, std::move(texels),
                   std::make_shared<const TextureMark>()};
        return true;
    });
}

KnownTextures LoadedTextures() {
    KnownTextures known;
    const auto& textures = editorState.textures;
    for (size_t i = 0; i < textures.size(); ++i) {
        known.try_emplace(textures[i].path, static_cast<int32_t>(i));
    }
    return known;
}

int32_t LoadTextureImage(const std::wstring& path) {
    KnownTextures known = LoadedTextures();
    return LoadTextureImage(path, known);
}

// A path is tried once: a failure is remembered as -1, so that many objects with one missing image cost one
// look at the disk.
int32_t LoadTextureImage(const std::wstring& path, KnownTextures& known) {
    const std::wstring fullPath = AbsolutePath(path);
    const auto [entry, isNew] = known.try_emplace(fullPath, -1);
    TextureImage texture;
    if (isNew && ReadTextureFile(fullPath, texture)) {
        editorState.textures.push_back(std::move(texture));
        entry->second = static_cast<int32_t>(editorState.textures.size()) - 1;
    }
    if (entry->second < 0) SetStatus(L"Texture image se nepodarilo nacist.");
    return entry->second;
}
