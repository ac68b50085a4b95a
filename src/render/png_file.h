// The program's own icons, read without the system: asking it for eight small pictures takes longer than the
// rest of the program's start.
#pragma once

#include "platform/image_decoder.h"

#include <string_view>

// Reads a PNG as it is written for icons: 8 bits each of red, green, blue and alpha, at most 1024 x 1024, not
// interlaced, with nothing in it that changes colours. False for every other image and for damaged bytes,
// with `image` unchanged: the system may know what to do with them.
bool ReadPngFile(std::string_view bytes, DecodedImage& image);
