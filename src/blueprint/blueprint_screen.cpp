#include "blueprint/blueprint_screen.h"

#include "blueprint/blueprint_editor.h"
#include "blueprint/visible_nodes.h"
#include "editor/fit_text.h"
#include "editor/popup_menu.h"
#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <array>
#include <string>

// The colours of this screen alone; those that it shares with the Scene editor are in the theme.
constexpr Pixel kFrameFill{0x221F1E}, kBarFill{0x2A2625}, kSideFill{0x282321}, kEdgeLine{0x483E3A};
constexpr Pixel kLegendFill{0x322C29}, kLegendEdge{0x4E423C};
constexpr Pixel kCanvasFill{0x1D1918}, kGridLine{0x2A2422};
constexpr Pixel kNodeFill{0x302A28}, kNodeEdge{0x60524A}, kNodeHeader{0x4A3D36}, kNodeAccent{0xEB8A3D};
constexpr Pixel kExecution{0x7DBE4B};  // links and pins

constexpr TextColor kTitleText{0xF4F0EC}, kSideTitle{0xEEE9E5}, kSideLabel{0xA0938A}, kSideText{0xE8E2DC};
constexpr TextColor kPinLabel{0xB0A298};

constexpr int32_t kGridStep = 32;  // pixels
constexpr int32_t kTextGap = 12;   // between a text and what it must not run into

constexpr TextFont kNodeFont{14, kSemiBold};
constexpr int32_t kNodeTextLeft = 14, kNodeHeaderHeight = 26;

constexpr std::array kLegend{L"Event BeginPlay", L"Print String", L"Branch"};

// Draws a text, shortened so that it ends before `right`.
static void DrawTextUpTo(int32_t right, int32_t x, int32_t y, const std::wstring& text, TextColor color,
                         TextFont font) {
    DrawText(x, y, ShortenMiddle(text, right - x, font), color, font.height, font.weight);
}

// ---- The canvas.

// The part of the canvas that the window shows.
static Rect ShownCanvas(const BlueprintLayout& layout) {
    Rect canvas = layout.canvas;
    canvas.right = std::min(canvas.right, layout.width);
    return canvas;
}

static void DrawGrid(const Rect& canvas) {
    const auto [left, top, right, bottom] = canvas;
    FillRect(canvas, kCanvasFill);
    for (int32_t x = left; x < right; x += kGridStep) FillRect({x, top, x + 1, bottom}, kGridLine);
    for (int32_t y = top; y < bottom; y += kGridStep) FillRect({left, y, right, y + 1}, kGridLine);
    FillRect({left, top, right, top + 1}, kEdgeLine);
    FillRect({left, top, left + 1, bottom}, kEdgeLine);
}

static void DrawLinks(const Rect& canvas) {
    const auto& nodes = editorState.blueprintNodes;
    for (size_t i = 1; i < nodes.size(); ++i) {
        for (const Rect& segment : LinkSegments(nodes[i - 1], nodes[i], canvas))
            FillRect(segment, kExecution);
    }
}

static void DrawPin(Point centre) {
    FillRect({centre.x - 4, centre.y - 4, centre.x + 4, centre.y + 4}, kExecution);
}

static void DrawNode(const VisibleNode& visible) {
    const BlueprintNode& node = editorState.blueprintNodes[visible.index];
    const Rect rect = NodeRect(node);
    const int32_t left = rect.left, top = rect.top, right = rect.right;
    DrawButton(rect, kNodeFill, kNodeEdge, true);
    FillRect({left + 1, top + 1, right - 1, top + kNodeHeaderHeight}, kNodeHeader);
    FillRect({left + 1, top + 1, left + 5, top + kNodeHeaderHeight}, kNodeAccent);
    DrawPin(InputPin(node));
    DrawPin(OutputPin(node));
    if (visible.title) {
        DrawTextUpTo(right - kTextGap, left + kNodeTextLeft, top + 6, node.title, kTitleText, kNodeFont);
    }
    if (visible.labels) {
        DrawText(left + kNodeTextLeft, top + 40, L"Exec", kPinLabel, 12, kNormal);
        DrawText(left + 136, top + 40, L"Out", kPinLabel, 12, kNormal);
    }
}

// ---- Around the canvas.

static void DrawTopBar(const BlueprintLayout& layout) {
    const Rect& bar = layout.topBar;
    FillRect(bar, kBarFill);
    FillRect({bar.left, bar.bottom - 1, bar.right, bar.bottom}, kEdgeLine);

    const bool unsaved = editorState.blueprintDirty;
    DrawButton(layout.sceneButton, kButtonFill, kButtonEdge, false);
    DrawText(28, 17, L"Scene", kButtonText, 14, kSemiBold);
    DrawButton(layout.saveButton, unsaved ? kUnsavedFill : kSaveFill, unsaved ? kUnsavedEdge : kSaveEdge,
               true);
    DrawText(118, 17, L"Save", kSaveText, 14, kSemiBold);

    const std::wstring& path = editorState.blueprintShownPath;
    const int32_t hintLeft = std::max(360, layout.width - 390);
    DrawTextUpTo(hintLeft - kTextGap, 238, 12, L"Blueprint: " + (path.empty() ? L"Untitled" : path),
                 kTitleText, {17, kSemiBold});
    DrawText(hintLeft, 14, L"Right click canvas: Add Node  |  Drag nodes  |  Ctrl+S save", kKeyHint, 13,
             kNormal);
}

static void DrawPalette(const Rect& palette) {
    FillRect(palette, kSideFill);
    FillRect({palette.right - 1, palette.top, palette.right, palette.bottom}, kEdgeLine);
    DrawText(18, 62, L"Blueprint Palette", kSideTitle, 17, kSemiBold);
    DrawText(18, 96, L"Flow", kSideLabel, 13, kNormal);
    int32_t y = 132;
    for (const wchar_t* title : kLegend) {
        DrawButton({18, y - 10, palette.right - 18, y + 24}, kLegendFill, kLegendEdge, false);
        DrawText(32, y, title, kSideText, 13, kSemiBold);
        y += 48;
    }
}

// Shown here because this screen has no Console, and a Blueprint that could not be saved must say so.
static void DrawStatus(int32_t left, int32_t y, int32_t width) {
    for (const std::wstring& line : WrapText(editorState.statusMessage, width, {13, kNormal})) {
        DrawText(left, y, line, kSideLabel, 13, kNormal);
        y += 18;
    }
}

static void DrawDetails(const Rect& details) {
    const int32_t left = details.left, boxRight = left + 262;
    FillRect(details, kSideFill);
    FillRect({left, details.top, left + 1, details.bottom}, kEdgeLine);
    DrawText(left + 18, 62, L"Details", kSideTitle, 17, kSemiBold);
    DrawText(left + 18, 98, L"Blueprint file", kSideLabel, 13, kNormal);
    DrawButton({left + 18, 122, boxRight, 156}, kLegendFill, kLegendEdge, false);
    DrawTextUpTo(boxRight - kTextGap, left + 30, 132, editorState.blueprintShownPath, kSideText,
                 {13, kSemiBold});
    DrawText(left + 18, 182, L"Nodes", kSideLabel, 13, kNormal);
    DrawText(left + 30, 208, std::to_wstring(editorState.blueprintNodes.size()), kSideText, 16, kSemiBold);
    DrawStatus(left + 18, 252, boxRight - left - 18);
}

// ---- The Add Node menu.

static void AddNode(const wchar_t* title, const MenuChoice& choice) {
    const BlueprintLayout layout = LayoutBlueprint(choice.area.width, choice.area.height);
    AddBlueprintNode(title, PlaceOfAddedNode(choice.menu.corner, layout));
}

constexpr MenuItem kAddNodeItems[] = {
    {36, L"Event", [](const MenuChoice& choice) { AddNode(L"Event", choice); }},
    {64, L"Print String", [](const MenuChoice& choice) { AddNode(L"Print String", choice); }},
    {92, L"Branch", [](const MenuChoice& choice) { AddNode(L"Branch", choice); }},
};

constexpr MenuTable kAddNodeMenu{
    .kind = MenuKind::AddNode,
    .title = L"Add Node",
    .titleTop = 10,
    .titleHeight = 14,
    .titleColor = TextColor{0xF6F2EE},
    .box = [](Point corner,
              const MenuArea& area) { return AddNodeMenuRect(corner, area.width, area.height); },
    .beside = PressBesideItems::Closes,
    .takesPressOutside = true,
    .items = kAddNodeItems};

// From back to front. The canvas comes first: nodes that run out of it are covered by the bar and the panels
// around it. Links lie under all nodes. Only visible nodes are drawn, from the lowest to the topmost.
void DrawBlueprintScreen(const BlueprintLayout& layout) {
    Clear(kFrameFill);
    DrawGrid(layout.canvas);
    DrawLinks(layout.canvas);
    for (const VisibleNode& node : VisibleNodes(editorState.blueprintNodes, ShownCanvas(layout)))
        DrawNode(node);

    DrawTopBar(layout);
    DrawPalette(layout.palette);
    if (Width(layout.details) > 0) DrawDetails(layout.details);
    DrawMenu(kAddNodeMenu, MenuAreaOf(layout));
}

// ---- The mouse.

static bool PressTopBar(Point pointer, const BlueprintLayout& layout) {
    const bool onScene = Contains(layout.sceneButton, pointer), onSave = Contains(layout.saveButton, pointer);
    if (!onScene && !onSave) return false;
    CloseMenu();
    if (onScene) {
        CloseBlueprintEditor();
    } else {
        SaveBlueprintEditor();
    }
    return true;
}

static void PressNode(Point pointer, const BlueprintLayout& layout) {
    const int32_t index = NodeAt(pointer, editorState.blueprintNodes, layout);
    if (index < 0) return;
    const Rect node = NodeRect(editorState.blueprintNodes[static_cast<size_t>(index)]);
    StartGesture(BlueprintDrag{.node = index, .grab{pointer.x - node.left, pointer.y - node.top}});
    SetStatus(L"Tahni Blueprint node mysi.");
}

void PressBlueprint(Point pointer, const BlueprintLayout& layout) {
    if (PressTopBar(pointer, layout) || ClickMenu(kAddNodeMenu, pointer, MenuAreaOf(layout))) return;
    PressNode(pointer, layout);
}

void DragBlueprintNode(const BlueprintDrag& drag, Point pointer, const BlueprintLayout& layout) {
    MoveBlueprintNode(drag.node, PlaceOfDraggedNode(pointer, drag.grab, layout));
}

void ReleaseBlueprint() {
    if (editorState.blueprintDirty) SaveBlueprintEditor();
}

void PressRightInBlueprint(Point pointer, const BlueprintLayout& layout) {
    CloseMenu();
    if (!Contains(layout.canvas, pointer)) return;
    OpenMenu(kAddNodeMenu, -1, pointer, MenuAreaOf(layout));
    SetStatus(L"Blueprint: vyber node k pridani.");
}
