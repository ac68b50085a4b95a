// Undoes the compression of PNG files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Unpacks a zlib stream of exactly `size` bytes. False, with `bytes` empty, when `stream` is damaged, ends
// early, holds more or fewer bytes, or fails its own check sum. What follows the stream is ignored.
bool Inflate(std::string_view stream, size_t size, std::string& bytes);
