// Texture images loaded from files.
#pragma once

#include <cstdint>
#include <string>

// The index of an image in EditorState::textures; a file that was loaded before is not read again. -1 when it
// cannot be loaded: the status message then says so. It is set here, other than for other files, because the
// sentence is the same for whoever asked.
int32_t LoadTextureImage(const std::wstring& path);
