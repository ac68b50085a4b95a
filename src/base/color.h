// The two byte orders of colours, kept apart by the compiler.
#pragma once

#include <cstdint>

enum class Pixel : uint32_t {};      // 0x00RRGGBB, as stored in the frame buffer
enum class TextColor : uint32_t {};  // 0x00BBGGRR, as the platform's text output takes it
