// Texture images loaded from files.
#pragma once

#include <cstdint>
#include <string>

// The index of an image in EditorState::textures; a file that was loaded before is not read again. -1 when it
// cannot be loaded, with the status message saying so.
int32_t LoadTextureImage(const std::wstring& path);
