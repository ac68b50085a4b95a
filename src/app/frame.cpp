#include "app/frame.h"

#include "app/current_layout.h"
#include "blueprint/blueprint_editor.h"
#include "blueprint/blueprint_screen.h"
#include "editor/entry_boxes.h"
#include "editor/hierarchy.h"
#include "editor/inspector.h"
#include "editor/menus.h"
#include "editor/panels.h"
#include "editor/theme.h"
#include "editor/toolbars.h"
#include "platform/window.h"
#include "project/files_menus.h"
#include "project/files_page.h"
#include "project/hub_screen.h"
#include "render/frame_buffer.h"
#include "scene/shown_screen.h"
#include "state/editor_state.h"
#include "viewport/scene_drawing.h"
#include "viewport/scene_view.h"

void DrawPanels(const EditorLayout& layout) {
    DrawToolPalette(layout);
    DrawPanelFrames(layout);
    DrawTopBar(layout);
    DrawInspector(layout);
    DrawBottomFrame(layout);
    DrawHierarchy(layout);
    DrawBottomPanel(layout);
    DrawFilesPage(layout);
    DrawFilesMenus(layout);
    DrawMenus(layout);
    DrawFilesDrag();
    DrawEntryBoxes(layout);
}

// The strips around the viewport. DrawScene fills the viewport itself, so that each pixel is cleared once.
static void FillAround(const Rect& viewport) {
    const int32_t width = frameBuffer.width, height = frameBuffer.height;
    FillRect({0, 0, width, viewport.top}, kWindowFill);
    FillRect({0, viewport.top, viewport.left, viewport.bottom}, kWindowFill);
    FillRect({viewport.right, viewport.top, width, viewport.bottom}, kWindowFill);
    FillRect({0, viewport.bottom, width, height}, kWindowFill);
}

// The scene first, then the panels over its edges: a picture is drawn from back to front. In the game the
// viewport is the whole window and nothing lies over it.
static void DrawEditorOrGame(const EditorLayout& layout) {
    FillAround(layout.viewport);
    DrawScene(CurrentView(layout.viewport));
    if (ShownScreen() != Shown::Game) DrawPanels(layout);
}

static void DrawCurrentScreen() {
    switch (ShownScreen()) {
        case Shown::Hub: return DrawProjectHub(CurrentHubLayout());
        case Shown::Blueprint: return DrawBlueprintScreen(CurrentBlueprintLayout());
        case Shown::Prefab:
        case Shown::SceneEditor:
        case Shown::Game: return DrawEditorOrGame(CurrentLayout());
    }
}

bool RenderFrame() {
    if (frameBuffer.isInUse) return false;
    frameBuffer.isInUse = true;

    const ClientSize size = WindowClientSize();
    const bool hasBuffer = EnsureSize(size.width, size.height);
    if (hasBuffer) {
        BeginPicture();
        DrawCurrentScreen();
        ShowPicture();
    }
    frameBuffer.isInUse = false;
    return hasBuffer;
}
