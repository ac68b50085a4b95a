#include "editor/toolbars.h"

#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "scene/undo.h"

constexpr int32_t kNarrowWidth = 760;  // pixels; up to here the right side stays empty
constexpr int32_t kButtonTop = 8, kButtonBottom = 36, kCaptionTop = 16;

namespace {
struct BarButton {
    TopBarButton button;
    bool isInPrefabEditor;  // else in the Scene editor
    bool isOnTheRight;      // left and right count from the window's right edge
    int32_t left, right;    // pixels
    int32_t captionLeft;    // pixels from the button's left
    const wchar_t* caption;
};
}  // namespace

// Drawing and clicking both walk this table, so a button is where it is seen.
// clang-format off
constexpr BarButton kButtons[] = {
    {TopBarButton::CloseEditor,  true,  false,  190,  262, 14, L"Scene"},
    {TopBarButton::SavePrefab,   true,  false,  268,  340, 14, L"Save"},
    {TopBarButton::ProjectHub,   false, true,  -420, -310, 12, L"Project Hub"},
    {TopBarButton::SaveProject,  false, true,  -302, -172, 12, L"Ulozit projekt"},
    {TopBarButton::BuildProject, false, true,  -164,  -14, 12, L"Sestavit projekt"},
};
// clang-format on

static bool IsInPrefabEditor() { return ShownScreen() == Shown::Prefab; }

static bool IsShown(const BarButton& button, const EditorLayout& layout) {
    if (ShownScreen() == Shown::Game || button.isInPrefabEditor != IsInPrefabEditor()) return false;
    return !button.isOnTheRight || layout.width > kNarrowWidth;
}

static Rect PlaceOf(const BarButton& button, const EditorLayout& layout) {
    const int32_t origin = button.isOnTheRight ? layout.width : 0;
    return {origin + button.left, kButtonTop, origin + button.right, kButtonBottom};
}

static bool HasSomethingToSave(const BarButton& button) {
    if (button.button == TopBarButton::SavePrefab) return editorState.prefabDirty;
    return button.button == TopBarButton::SaveProject && SceneHasChanges();
}

static void DrawBarButton(const BarButton& button, const Rect& place) {
    TextColor captionColor = kSaveText;
    if (HasSomethingToSave(button)) {
        DrawButton(place, kUnsavedFill, kUnsavedEdge, true);
    } else if (button.button == TopBarButton::SavePrefab) {
        DrawButton(place, kSaveFill, kSaveEdge, true);
    } else {
        DrawButton(place, kButtonFill, kButtonEdge, false);
        captionColor = kButtonText;
    }
    DrawText(place.left + button.captionLeft, kCaptionTop, button.caption, captionColor, 14, kSemiBold);
}

static void DrawMode(const EditorLayout& layout) {
    if (!IsInPrefabEditor()) {
        const bool playing = editorState.playMode;
        DrawText(190, 12, playing ? L"[PLAY MODE]" : L"[EDIT MODE]", playing ? kPlayModeText : kEditModeText,
                 16, kSemiBold);
        return;
    }
    const std::wstring& name = editorState.prefabName;
    DrawText(356, 12, L"[PREFAB MODE] " + (name.empty() ? L"Prefab" : name), kPrefabText, 16, kSemiBold);
    if (layout.width > kNarrowWidth) {
        DrawText(layout.width - 280, 13, L"Ctrl+S save  |  Esc scene", kKeyHint, 13, kNormal);
    }
}

void DrawTopBar(const EditorLayout& layout) {
    DrawImage(icons.logo, {14, 8, 38, 32});
    DrawText(44, 11, L"ZelEngine", kProgramTitle, 18, kSemiBold);
    for (const BarButton& button : kButtons) {
        if (IsShown(button, layout)) DrawBarButton(button, PlaceOf(button, layout));
    }
    DrawMode(layout);
}

TopBarButton TopBarButtonAt(Point point, const EditorLayout& layout) {
    for (const BarButton& button : kButtons) {
        if (IsShown(button, layout) && Contains(PlaceOf(button, layout), point)) return button.button;
    }
    return TopBarButton::None;
}

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

// A press between the buttons is taken too and does nothing: an object behind the palette is not picked
// through it.
bool ClickToolPalette(Point pointer, const EditorLayout& layout) {
    if (!Contains(layout.viewport, pointer) || !Contains(PaletteBox(layout), pointer)) return false;
    for (int32_t i = 0; i < 3; ++i) {
        if (Contains(ToolButton(layout, i), pointer)) SelectTool(kTools[static_cast<size_t>(i)].tool);
    }
    return true;
}
