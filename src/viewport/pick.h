// Which object is drawn at a pixel.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "state/game_object.h"
#include "state/mesh.h"

#include <cstdint>
#include <span>

// The picture that is picked from.
struct PickView {
    std::span<const GameObject> scene{};
    std::span<const MeshAsset> meshes{};
    Rect viewport{};  // frame buffer pixels
    Matrix4 viewProjection{};
    Vec3 eye{};
    bool playMode = false;  // markers and their meshes are not drawn then
};

// The index of the object at a pixel of the frame buffer, -1 for none and outside the viewport. Icons and
// texts lie over meshes, the later one in the scene over the earlier; of meshes the nearest, of equal depths
// the one drawn first.
int32_t PickObject(const PickView& view, Point pixel);

// The picture that the window shows now.
PickView CurrentPickView(const Rect& viewport);
