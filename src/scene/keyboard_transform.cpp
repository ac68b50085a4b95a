#include "scene/keyboard_transform.h"

#include "platform/window.h"
#include "scene/interaction.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/transform.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <iterator>

constexpr float kFast = 2.5f;  // factor while Ctrl is held
constexpr float kSmallestScale = 0.1f;

namespace {
struct KeyboardTool {
    Vec3 GameObject::*changed;
    float speed;  // per second: world units, radians, scale
    const wchar_t* message;
};
}  // namespace

// clang-format off
constexpr KeyboardTool kTools[] = {  // by Tool
    {&GameObject::position, 2.0f, L"Move tool: upravuji pozici vybraneho objektu."},
    {&GameObject::rotation, 1.8f, L"Rotate tool: upravuji rotaci vybraneho objektu."},
    {&GameObject::scale,    0.9f, L"Scale tool: upravuji velikost vybraneho objektu."},
};
// clang-format on
static_assert(std::size(kTools) == static_cast<size_t>(Tool::Scale) + 1);

static bool CanTransform() {
    if (editorState.playMode || editorState.runtimeMode) return false;
    return SelectionIsValid() && HasPlace(SelectedObject());
}

void KeyboardTransformStep(float dt) {
    const Vec3 input{KeyAxis('L', 'J'), KeyAxis('U', 'O'), KeyAxis('I', 'K')};
    if (!CanTransform() || input == Vec3{}) {
        editorState.keyboardTransform = false;
        return;
    }
    if (!editorState.keyboardTransform) pushUndo("Keyboard transform");
    editorState.keyboardTransform = true;

    const KeyboardTool& tool = kTools[static_cast<size_t>(editorState.tool)];
    const float factor = IsControlHeld() ? kFast : 1.0f;
    Vec3& changed = SelectedObject().*tool.changed;
    changed = changed + input * tool.speed * factor * dt;
    if (editorState.tool == Tool::Scale) changed = AtLeast(changed, kSmallestScale);
    MarkChanged();

    SetStatus(tool.message);
}
