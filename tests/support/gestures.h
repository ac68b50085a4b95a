// What the pointer holds, as tests ask for it.
#pragma once

#include "scene/interaction.h"
#include "state/editor_state.h"

#include <optional>

// The gesture of this kind while it is under way, else null.
template <typename Kind>
const Kind* Held() {
    return std::get_if<Kind>(&editorState.gesture);
}

// For a press on a row or an item: whether it has become a drag.
template <typename Kind>
bool IsDragged() {
    return Held<Kind>() && Held<Kind>()->dragging;
}

// Makes a fresh gesture of this kind the one under way, without holding the mouse.
template <typename Kind>
Kind& Hold(const Kind& gesture = {}) {
    return editorState.gesture.emplace<Kind>(gesture);
}

// Tables of places are easier to read in numbers: 0 for nothing, 1 for the first enumerator.
template <typename Enumerator>
int32_t NumberOf(std::optional<Enumerator> value) {
    return value ? static_cast<int32_t>(*value) + 1 : 0;
}

inline int32_t HeldEdge() {
    return Held<PanelResize>() ? NumberOf(std::optional(Held<PanelResize>()->edge)) : 0;
}
inline int32_t HeldAxis() { return Held<GizmoDrag>() ? NumberOf(std::optional(Held<GizmoDrag>()->axis)) : 0; }

// Where the dragged Hierarchy row would land.
inline std::optional<DropPlace> HeldDrop() {
    return Held<HierarchyDrag>() ? Held<HierarchyDrag>()->drop : std::nullopt;
}
