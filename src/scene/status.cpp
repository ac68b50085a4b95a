#include "scene/status.h"

#include "state/editor_state.h"

#include <utility>

void SetStatus(std::wstring message) { editorState.statusMessage = std::move(message); }
