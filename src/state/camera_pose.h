// Where a camera stands and where it looks.
#pragma once

#include "base/vec3.h"

struct CameraPose {
    Vec3 position{0, 4, -10};  // world units, Y up
    float yaw = 0;             // radians about world Y; 0 looks along +Z
    float pitch = -0.24f;      // radians, positive looks up; the editor keeps its own in -1.1 .. 1.1

    friend constexpr bool operator==(const CameraPose&, const CameraPose&) = default;
};
