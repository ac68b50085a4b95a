#include "editor/tool_palette.h"

#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "scene/status.h"

namespace {

struct ToolEntry {
    Tool tool{};
    const wchar_t* name = L"";
};

}  // namespace

constexpr ToolEntry kTools[] = {{Tool::Move, L"Move"}, {Tool::Rotate, L"Rotate"}, {Tool::Scale, L"Scale"}};
constexpr int32_t kToolPitch = 32;  // from one button to the next

static Rect PaletteBox(const EditorLayout& layout) {
    const auto [left, top, right, bottom] = layout.viewport;
    return {left + 8, top + 8, left + 123, top + 117};
}

static Rect ToolButton(const EditorLayout& layout, int32_t index) {
    const int32_t left = layout.viewport.left + 14, top = layout.viewport.top + 14 + kToolPitch * index;
    return {left, top, left + 97, top + 27};
}

void SelectTool(Tool tool) {
    editorState.tool = tool;
    SetStatus(std::wstring(L"Tool prepnut na ") + kTools[static_cast<size_t>(tool)].name + L".");
}

void DrawToolPalette(const EditorLayout& layout) {
    DrawPanelBox(PaletteBox(layout), kPanelFill, kPanelLightEdge);
    for (int32_t i = 0; i < 3; ++i) {
        const ToolEntry& entry = kTools[static_cast<size_t>(i)];
        const Rect button = ToolButton(layout, i);
        const bool isActive = editorState.tool == entry.tool;
        DrawButton(button, isActive ? kActiveTabFill : kButtonFill, isActive ? kAccent : kButtonEdge, false);
        DrawText(button.left + 12, button.top + 6, entry.name, isActive ? kActiveTabText : kButtonText, 14,
                 kSemiBold);
    }
}

bool ClickToolPalette(Point pointer, const EditorLayout& layout) {
    if (!Contains(layout.viewport, pointer) || !Contains(PaletteBox(layout), pointer)) return false;
    for (int32_t i = 0; i < 3; ++i) {
        if (Contains(ToolButton(layout, i), pointer)) SelectTool(kTools[static_cast<size_t>(i)].tool);
    }
    return true;
}
