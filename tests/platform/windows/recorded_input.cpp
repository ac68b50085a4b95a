#include "platform/windows/recorded_input.h"

#include <algorithm>

RecordedInput recordedInput;

void HandleInput(const InputEvent& event) {
    recordedInput.events.push_back(event);
    if (recordedInput.onEvent) recordedInput.onEvent(event);
}

int32_t CountOf(InputKind kind) {
    return static_cast<int32_t>(std::ranges::count(recordedInput.events, kind, &InputEvent::kind));
}
