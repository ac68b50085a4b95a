#include "project/files_page.h"

#include "base/path_text.h"
#include "base/text_units.h"
#include "editor/fit_text.h"
#include "editor/panels.h"
#include "editor/theme.h"
#include "editor/widgets.h"
#include "project/asset_commands.h"
#include "project/files_menus.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstdlib>

constexpr int32_t kGridLeft = 18, kGridTop = 82;  // pixels; the top from the panel's
constexpr int32_t kCellPitch = 108, kRowPitch = 60;
constexpr int32_t kCellWidth = 98, kCellAbove = 6, kCellBelow = 52;  // what a cell covers around its corner
constexpr int32_t kIconSize = 28;
constexpr size_t kLongestShownName = 13, kShownOfLongName = 12;
constexpr int32_t kDragThreshold = 6;  // |dx| + |dy| in pixels
constexpr const wchar_t* kHelp =
    L"Dvojklik: otevrit  |  Levy klik prazdno: vytvorit  |  Pravy klik: menu  |  Drop: import";

constexpr Pixel kSheet{0xD8D4CE}, kSheetFold{0x9C948C}, kSheetInk{0x6A625B};
constexpr Pixel kBlueprintSign{0x4B8ABE}, kPrefabSign{0x4BA6D8}, kPrefabShade{0x2F7CA8};
constexpr Pixel kSkySign{0x8FC4E8}, kHillSign{0x5FA05A}, kSunSign{0xF2C24B};

// ---- Icons of 28 x 28 pixels: images for four kinds, and sheets of paper with a sign for the others.

// A sheet of paper with a folded corner, 20 x 26 pixels in the middle of 28 x 28.
static Point DrawSheet(const Rect& place) {
    const Point corner{place.left + 4, place.top + 1};
    FillRect({corner.x, corner.y, corner.x + 20, corner.y + 26}, kSheet);
    for (int32_t i = 0; i < 6; ++i) {
        FillRect({corner.x + 14 + i, corner.y, corner.x + 20, corner.y + i + 1}, i < 5 ? kSheetFold : kSheet);
    }
    return corner;
}

static void DrawLines(Point sheet) {
    for (int32_t y = 9; y < 23; y += 4)
        FillRect({sheet.x + 4, sheet.y + y, sheet.x + 16, sheet.y + y + 1}, kSheetInk);
}

// Two boxes and the link between them.
static void DrawBlueprintSign(Point sheet) {
    FillRect({sheet.x + 3, sheet.y + 8, sheet.x + 10, sheet.y + 13}, kBlueprintSign);
    FillRect({sheet.x + 6, sheet.y + 13, sheet.x + 7, sheet.y + 19}, kSheetInk);
    FillRect({sheet.x + 6, sheet.y + 19, sheet.x + 10, sheet.y + 20}, kSheetInk);
    FillRect({sheet.x + 10, sheet.y + 17, sheet.x + 17, sheet.y + 22}, kBlueprintSign);
}

// A box with a lid in the light and a side in the shade.
static void DrawPrefabSign(Point sheet) {
    FillRect({sheet.x + 4, sheet.y + 12, sheet.x + 13, sheet.y + 21}, kPrefabSign);
    for (int32_t i = 0; i < 4; ++i) {
        FillRect({sheet.x + 5 + i, sheet.y + 11 - i, sheet.x + 14 + i, sheet.y + 12 - i}, kPrefabSign);
        FillRect({sheet.x + 13 + i, sheet.y + 11 - i, sheet.x + 14 + i, sheet.y + 20 - i}, kPrefabShade);
    }
}

// A landscape.
static void DrawImageSign(Point sheet) {
    FillRect({sheet.x + 3, sheet.y + 8, sheet.x + 17, sheet.y + 20}, kSkySign);
    FillRect({sheet.x + 5, sheet.y + 10, sheet.x + 8, sheet.y + 13}, kSunSign);
    for (int32_t i = 0; i < 5; ++i) {
        FillRect({sheet.x + 11 - i, sheet.y + 15 + i, sheet.x + 12 + i, sheet.y + 16 + i}, kHillSign);
    }
}

// Every kind has its case here: a new one does not compile without an icon.
static void DrawIcon(AssetKind kind, const Rect& place) {
    switch (kind) {
        case AssetKind::Folder: DrawImage(icons.files, place); break;
        case AssetKind::Script: DrawImage(icons.script, place); break;
        case AssetKind::Model: DrawImage(icons.model, place); break;
        case AssetKind::SceneFile: DrawImage(icons.scene, place); break;
        case AssetKind::Blueprint: DrawBlueprintSign(DrawSheet(place)); break;
        case AssetKind::Prefab: DrawPrefabSign(DrawSheet(place)); break;
        case AssetKind::Image: DrawImageSign(DrawSheet(place)); break;
        case AssetKind::Other: DrawLines(DrawSheet(place)); break;
    }
}

// ---- The page.

static bool ShowsFilesPage() { return editorState.bottomTab == BottomTab::Files; }

static bool IsOnPage(Point point, const EditorLayout& layout) {
    return ShowsFilesPage() && Contains(layout.bottom, point);
}

static Rect PathBar(const EditorLayout& layout) {
    return {12, layout.bottomTop + 44, layout.width - 12, layout.bottomTop + 74};
}

static Rect BackButton(const EditorLayout& layout) {
    return {18, layout.bottomTop + 48, 54, layout.bottomTop + 70};
}

// A long name is cut after twelve units, or after eleven if that would split a surrogate pair.
static std::wstring ShownName(const std::wstring& name) {
    if (name.size() <= kLongestShownName) return name;
    const size_t kept = IsFirstHalf(name[kShownOfLongName - 1]) ? kShownOfLongName - 1 : kShownOfLongName;
    return name.substr(0, kept) + L"...";
}

static void DrawPathBar(const EditorLayout& layout) {
    const int32_t helpLeft = std::max(260, layout.width - 420), y = layout.bottomTop + 52;
    const std::wstring folder = RelativeTo(editorState.filesFolder, editorState.projectRoot);
    DrawPanelBox(PathBar(layout), kPathBarFill, kPathBarEdge);
    DrawPanelBox(BackButton(layout), kBackButtonFill, kBackButtonEdge);
    DrawText(26, y, L"<", kFilesText, 14, kSemiBold);
    DrawText(64, y, ShortenMiddle(folder, helpLeft - 74, {15, kSemiBold}), kFilesText, 15, kSemiBold);
    DrawText(helpLeft, y, kHelp, kHintText, 13, kNormal);
}

static Rect CellOf(Point corner) {
    return {corner.x, corner.y - kCellAbove, corner.x + kCellWidth, corner.y + kCellBelow};
}

static void DrawItem(int32_t index, Point corner, const EditorLayout& layout) {
    const AssetEntry& entry = editorState.fileEntries[static_cast<size_t>(index)];
    const Rect cell = CellOf(corner);
    if (index == editorState.selectedFile) {
        FillRect(cell, kSelectedFileFill);
        DrawBoxEdges(cell, kSelectedFileEdge, kSelectedFileEdge);
    } else {
        FillBottomStrip(cell, layout);
    }
    DrawIcon(entry.kind, {corner.x + 35, corner.y, corner.x + 35 + kIconSize, corner.y + kIconSize});
    DrawText(corner.x + 7, corner.y + 32, ShownName(entry.name), kFilesText, 13, kNormal);
    editorState.filesCells.push_back({cell, entry.path});
}

static Point NextCorner(Point corner, const EditorLayout& layout) {
    corner.x += kCellPitch;
    if (corner.x + kCellWidth > layout.width - 18) corner = {kGridLeft, corner.y + kRowPitch};
    return corner;
}

// Draws the items of the folder row by row and registers a cell with the path of each. Clicks are resolved
// against these cells, that is against what the user saw, whatever has become of the list since. Drawing
// ends at the lower edge of the window, so a folder of thousands of files costs a frame no more than the
// items in sight.
void DrawFilesPage(const EditorLayout& layout) {
    editorState.filesCells.clear();
    if (!ShowsFilesPage()) return;
    DrawPathBar(layout);
    Point corner{kGridLeft, layout.bottomTop + kGridTop};
    const auto count = static_cast<int32_t>(editorState.fileEntries.size());
    for (int32_t i = 0; i < count && corner.y - kCellAbove < layout.height; ++i) {
        if (editorState.fileEntries[static_cast<size_t>(i)].folder != editorState.filesFolder) continue;
        DrawItem(i, corner, layout);
        corner = NextCorner(corner, layout);
    }
}

void DrawFilesDrag() {
    const auto* drag = std::get_if<FilesDrag>(&editorState.gesture);
    if (!drag || !drag->dragging) return;
    const auto source = static_cast<size_t>(drag->source);
    if (source >= editorState.fileEntries.size()) return;
    const std::wstring name = ShownName(editorState.fileEntries[source].name);
    const Point corner{editorState.pointer.x + 14, editorState.pointer.y + 10};
    const int32_t width = MeasureCanvasText(name, 13, kNormal) + 16;
    DrawPanelBox({corner.x, corner.y, corner.x + width, corner.y + 24}, kMenuFill, kSelectedFileEdge);
    DrawText(corner.x + 8, corner.y + 5, name, kFilesText, 13, kNormal);
}

int32_t FilesItemAt(Point point, const EditorLayout& layout) {
    if (!IsOnPage(point, layout)) return -1;
    const auto isUnderPoint = [point](const PathZone& cell) { return Contains(cell.rect, point); };
    const auto cell = std::ranges::find_if(editorState.filesCells, isUnderPoint);
    if (cell == editorState.filesCells.end()) return -1;
    const auto& entries = editorState.fileEntries;
    const auto entry = std::ranges::find(entries, cell->path, &AssetEntry::path);
    const bool isShown = entry != entries.end() && entry->folder == editorState.filesFolder;
    return isShown ? static_cast<int32_t>(entry - entries.begin()) : -1;
}

static void PressItem(int32_t item, Point pointer) {
    if (GestureIsUnderWay()) return;
    editorState.selectedFile = item;
    StartGesture(FilesDrag{.source = item, .press = pointer});
    SetStatus(L"Vybrana polozka projektu: " + editorState.fileEntries[static_cast<size_t>(item)].name);
}

bool PressFilesPage(Point pointer, const EditorLayout& layout) {
    if (!IsOnPage(pointer, layout)) return false;
    const int32_t item = FilesItemAt(pointer, layout);
    if (Contains(BackButton(layout), pointer)) {
        FilesGoUp();
    } else if (item >= 0) {
        PressItem(item, pointer);
    } else if (pointer.y >= PathBar(layout).bottom) {
        OpenFilesMenu(-1, pointer, layout);
    }
    return true;
}

void DragFilesItem(FilesDrag& drag, Point pointer) {
    const int32_t distance = std::abs(pointer.x - drag.press.x) + std::abs(pointer.y - drag.press.y);
    drag.dragging = drag.dragging || distance >= kDragThreshold;
}

bool OpenFilesItemAt(Point pointer, const EditorLayout& layout) {
    const int32_t item = FilesItemAt(pointer, layout);
    if (item < 0) return false;
    OpenAsset(item);
    return true;
}

bool OpenFilesMenuAt(Point pointer, const EditorLayout& layout) {
    if (!IsOnPage(pointer, layout)) return false;
    const int32_t item = FilesItemAt(pointer, layout);
    if (item >= 0) editorState.selectedFile = item;
    OpenFilesMenu(item, pointer, layout);
    return true;
}
