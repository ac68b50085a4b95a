#include "scene/status.h"

#include "state/editor_state.h"

#include <utility>

void SetStatus(std::wstring message) {
    const wchar_t* before = L" Jina verze: ";
    for (const std::wstring& name : std::exchange(editorState.otherVersions, {})) {
        message += before + name;
        before = L", ";
    }
    editorState.statusMessage = std::move(message);
}
