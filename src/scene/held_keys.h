// The keys that are down, as movements read them.
#pragma once

#include <cstdint>

// `key` is a virtual-key code.
bool KeyIsDown(uint32_t key);

// +1 for the first key, -1 for the second, 0 for both or none.
float KeyAxis(uint32_t positive, uint32_t negative);
