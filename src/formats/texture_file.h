// Images as textures.
#pragma once

#include "state/texture_image.h"

#include <cstdint>
#include <string>
#include <unordered_map>

// The texture of an image file. False, with `texture` as it was, when there is none, or no memory for it.
bool ReadTextureFile(const std::wstring& fullPath, TextureImage& texture);

// Indices into EditorState::textures by the full path of the image; -1 for one that cannot be loaded.
using KnownTextures = std::unordered_map<std::wstring, int32_t>;

// Those that are loaded now.
KnownTextures LoadedTextures();

// The index of an image in EditorState::textures; a file that was loaded before is not read again. -1 when it
// cannot be loaded: the status message then says so.
int32_t LoadTextureImage(const std::wstring& path);

// The same for one of many images that are loaded in a row: asks `known`, which began as LoadedTextures(),
// and remembers there what it has loaded and what cannot be, so that no file is read twice.
int32_t LoadTextureImage(const std::wstring& path, KnownTextures& known);
