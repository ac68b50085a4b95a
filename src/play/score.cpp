#include "play/score.h"

#include "scene/editor_state.h"

#include <algorithm>
#include <cwctype>
#include <string>

static bool MentionsScore(std::wstring text) {
    std::ranges::transform(text, text.begin(),
                           [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
    return text.find(L"score") != std::wstring::npos || text.find(L"skore") != std::wstring::npos;
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
