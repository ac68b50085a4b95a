#include "viewport/scene_view.h"

#include "base/limit.h"
#include "render/raster/camera.h"
#include "scene/editor_camera.h"
#include "scene/transform.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cmath>

constexpr Pixel kDefaultBackground{0x2D2219};
constexpr Vec3 kDefaultLight{-0.45f, 0.85f, -0.28f};

bool HasMarker(const GameObject& object) { return object.isEntity || object.isCamera || object.isLight; }

bool IsShown(const GameObject& object, bool showsGame) {
    return object.active && !(showsGame && HasMarker(object));
}

bool ShowsMesh(const GameObject& object, size_t meshCount) {
    return !object.isText && object.hasShape && object.meshIndex >= 0 &&
           static_cast<size_t>(object.meshIndex) < meshCount;
}

CameraPose ActiveCamera(std::span<const GameObject> scene, const CameraPose& editorCamera, bool playMode) {
    const auto camera = std::ranges::find_if(scene, &GameObject::isCamera);
    if (!playMode || camera == scene.end()) return editorCamera;
    const auto index = static_cast<int32_t>(camera - scene.begin());
    return {WorldPosition(scene, index), camera->rotation.y, camera->rotation.x};
}

Vec3 LightDirection(std::span<const GameObject> scene) {
    const auto light = std::ranges::find_if(scene, &GameObject::isLight);
    if (light == scene.end()) return Normalise(kDefaultLight);
    const float rx = light->rotation.x, ry = light->rotation.y;
    // cos, not sin, in the middle: a light without rotation points half way up.
    return Normalise({std::sin(ry) * std::cos(rx), std::cos(rx), std::cos(ry) * std::cos(rx)});
}

// Byte for byte into the pixel: object colours are not converted.
static Pixel BackgroundOf(const GameObject& camera) {
    const float brightness = Limit(camera.cameraBrightness, 0.0f, 1.0f);
    const auto channel = [&camera, brightness](int shift) {
        const auto value = static_cast<float>(camera.cameraBackground >> shift & 0xFF);
        return static_cast<uint32_t>(value * brightness) << shift;
    };
    return Pixel{channel(16) | channel(8) | channel(0)};
}

// Who gives the colour, first to last: the game's first active camera, a selected camera, the first camera of
// the scene. So a user who changes the background of one of several cameras sees it while it is selected.
Pixel ViewportBackground(std::span<const GameObject> scene, int32_t selectedIndex, bool playMode) {
    if (playMode) {
        const auto active =
            std::ranges::find_if(scene, [](const GameObject& o) { return o.isCamera && o.active; });
        if (active != scene.end()) return BackgroundOf(*active);
    }
    const bool selectionIsValid = selectedIndex >= 0 && selectedIndex < static_cast<int32_t>(scene.size());
    if (selectionIsValid && scene[selectedIndex].isCamera) return BackgroundOf(scene[selectedIndex]);
    const auto first = std::ranges::find_if(scene, &GameObject::isCamera);
    return first != scene.end() ? BackgroundOf(*first) : kDefaultBackground;
}

bool ShowsGame() { return editorState.playMode || editorState.runtimeMode; }

// In goes the viewport, out comes all that placing a point on the screen needs. Drawing and picking both ask
// here: what is seen is what is hit.
FrameView CurrentView(const Rect& viewport) {
    const CameraPose camera = ActiveCamera(editorState.scene, editorState.camera, ShowsGame());
    const Matrix4 projection = ProjectionMatrix(Width(viewport), Height(viewport));
    return {camera, MultiplyMatrix(projection, ViewMatrix(camera)), viewport};
}
