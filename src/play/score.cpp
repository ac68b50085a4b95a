#include "play/score.h"

#include "base/letter_case.h"
#include "state/editor_state.h"

#include <algorithm>
#include <string>

static bool MentionsScore(const std::wstring& text) {
    const std::wstring capitals = UpperCase(text);
    return capitals.find(UpperCase(L"score")) != std::wstring::npos ||
           capitals.find(UpperCase(L"skore")) != std::wstring::npos;
}

static bool IsActiveText(const GameObject& object) { return object.active && object.isText; }

void ShowScore() {
    Scene& scene = editorState.scene;
    auto shown = std::ranges::find_if(scene, [](const GameObject& object) {
        return IsActiveText(object) && (MentionsScore(object.name) || MentionsScore(object.text));
    });
    if (shown == scene.end()) shown = std::ranges::find_if(scene, IsActiveText);
    if (shown == scene.end()) return;
    shown->text = L"Score: " + std::to_wstring(editorState.score);
}
