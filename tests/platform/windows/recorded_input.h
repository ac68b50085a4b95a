// What the window told the program, for a test to read.
#pragma once

#include "platform/window.h"

#include <functional>
#include <vector>

struct RecordedInput {
    std::vector<InputEvent> events{};
    std::function<void(const InputEvent&)> onEvent{};  // called for each, when set
};

extern RecordedInput recordedInput;

// How many of a kind have come.
int32_t CountOf(InputKind kind);
