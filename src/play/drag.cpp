#include "play/drag.h"

#include "base/limit.h"

#include <algorithm>

float KeptByDrag(float drag, float dt) { return std::max(1 - dt * Limit(drag, 0.0f, 5.0f), 0.0f); }
