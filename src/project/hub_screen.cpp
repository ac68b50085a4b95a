#include "project/hub_screen.h"

#include "editor/fit_text.h"
#include "editor/theme.h"
#include "editor/widgets.h"
#include "project/project_hub.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/interaction.h"
#include "state/editor_state.h"

#include <algorithm>

// ---- Where everything lies.

constexpr int32_t kRailWidth = 208, kNarrowWindow = 1000;  // pixels; a narrower window has no rail
constexpr int32_t kEdge = 24;                              // between the regions
constexpr int32_t kTop = 96, kRightEdge = 32, kBottomEdge = 36;
constexpr int32_t kRowPitch = 78, kRowHeight = 70;
constexpr int32_t kFirstRow = 72;  // below the list's top
constexpr int32_t kListEdge = 12;  // between the list's edge, its columns and their rows
constexpr int32_t kLeastColumn = 200;
constexpr int32_t kMenuWidth = 246, kMenuHeight = 112, kMenuEdge = 8;

// Rows go down the first column and, if the list is too long and the window wide enough, down a second one.
// What does not fit either is not shown; the picture then says how many those are.
static void PlaceRows(HubLayout& layout, size_t projects) {
    const Rect& list = layout.list;
    const int32_t room = list.bottom - kListEdge - (list.top + kFirstRow);
    const int32_t perColumn = std::max((room + kRowPitch - kRowHeight) / kRowPitch, 0);
    const int32_t space = Width(list) - 2 * kListEdge;
    const bool isLong = projects > static_cast<size_t>(perColumn);
    const int32_t columns = isLong && (space - kListEdge) / 2 >= kLeastColumn ? 2 : 1;
    const int32_t rowWidth = (space - (columns - 1) * kListEdge) / columns;
    if (rowWidth < 1) return;

    const size_t shown = std::min(projects, static_cast<size_t>(perColumn * columns));
    for (int32_t i = 0; i < static_cast<int32_t>(shown); ++i) {
        const int32_t left = list.left + kListEdge + i / perColumn * (rowWidth + kListEdge);
        const int32_t top = list.top + kFirstRow + i % perColumn * kRowPitch;
        layout.rows.push_back({left, top, left + rowWidth, top + kRowHeight});
    }
}

HubLayout LayoutHub(int32_t width, int32_t height, size_t projects) {
    HubLayout layout{.width = width, .height = height};
    const int32_t railWidth = width >= kNarrowWindow ? kRailWidth : 0;
    layout.rail = {0, 0, railWidth, height};
    layout.contentLeft = railWidth + kEdge;
    layout.openButton = {width - 220, 20, width - 32, 54};

    const int32_t right = width - kRightEdge, bottom = height - kBottomEdge;
    const int32_t left = right - std::clamp(width * 3 / 10, 280, 400);
    layout.templates = {left, kTop, right, bottom};
    layout.basicCard = {left + 22, kTop + 126, right - 22, kTop + 208};
    layout.emptyCard = {left + 22, kTop + 220, right - 22, kTop + 302};
    layout.list = {layout.contentLeft, kTop, left - kEdge, bottom};
    PlaceRows(layout, projects);
    return layout;
}

Rect ProjectMenuRect(Point corner, int32_t width, int32_t height) {
    const int32_t left = std::max(std::min(corner.x, width - kMenuEdge - kMenuWidth), kMenuEdge);
    const int32_t top = std::max(std::min(corner.y, height - kMenuEdge - kMenuHeight), kMenuEdge);
    return {left, top, left + kMenuWidth, top + kMenuHeight};
}

// ---- The picture.

constexpr Pixel kHubFill{0x1A1613}, kHubRailFill{0x15120F};
constexpr Pixel kCardFill{0x2D2622}, kCardEdge{0x4C423A};
constexpr TextColor kHubTitle{0xF4F0EC}, kHubText{0xDCD5CD}, kHubQuietText{0xA69A91};
constexpr TextColor kHubSilentText{0x716862};  // of a project that cannot be reached
constexpr TextFont kSmall{13, kNormal};
constexpr int32_t kLine = 18;  // pixels from one line of small text to the next

// Nothing is lit while a menu is open, because the press would go to the menu.
static bool IsUnderPointer(const Rect& rect) {
    return !MenuIsOpen(MenuKind::Project) && Contains(rect, editorState.pointer);
}

static void DrawCard(const Rect& rect, bool isLit) {
    DrawPanelBox(rect, isLit ? kLitFill : kCardFill, isLit ? kLitEdge : kCardEdge);
}

// Lines of small text from (x, y) down.
static void DrawWrapped(int32_t x, int32_t y, int32_t width, const std::wstring& text) {
    for (const std::wstring& line : WrapText(text, width, kSmall)) {
        DrawText(x, y, line, kHubQuietText, kSmall.height, kSmall.weight);
        y += kLine;
    }
}

static void DrawRailEntry(int32_t y, const std::wstring& label, const std::wstring& value) {
    DrawText(24, y, label, kHubQuietText, 13, kNormal);
    DrawText(24, y + kLine, ShortenMiddle(value, 164, {15, kSemiBold}), kHubText, 15, kSemiBold);
}

static void DrawRail(const HubLayout& layout) {
    if (Width(layout.rail) == 0) return;
    const auto& projects = editorState.recentProjects;
    FillRect(layout.rail, kHubRailFill);
    FillRect({layout.rail.right - 1, 0, layout.rail.right, layout.height}, kPanelLightEdge);
    DrawImage(icons.logo, {24, 20, 56, 52});
    DrawText(68, 20, L"ZelEngine Editor", kHubTitle, 16, kSemiBold);
    DrawText(68, 39, L"Local projects", kHubQuietText, 13, kNormal);
    FillRect({24, 76, layout.rail.right - 24, 77}, kPanelLightEdge);
    DrawRailEntry(96, L"Projects", std::to_wstring(projects.size()));
    DrawRailEntry(150, L"Recent", projects.empty() ? L"-" : projects.front().name);
}

static void DrawHead(const HubLayout& layout) {
    const Rect& button = layout.openButton;
    const int32_t titleRight = layout.contentLeft + MeasureCanvasText(L"Project Hub", 28, kSemiBold);
    if (titleRight < button.left) DrawText(layout.contentLeft, 18, L"Project Hub", kHubTitle, 28, kSemiBold);
    DrawText(layout.contentLeft, 56, L"Open an existing project or create a new one.", kHubQuietText, 14,
             kNormal);
    DrawButton(button, IsUnderPointer(button) ? kUnsavedFill : kSaveFill,
               IsUnderPointer(button) ? kUnsavedEdge : kSaveEdge, true);
    const int32_t width = MeasureCanvasText(L"Open other project", 15, kSemiBold);
    DrawText(button.left + (Width(button) - width) / 2, button.top + 9, L"Open other project", kSaveText, 15,
             kSemiBold);
}

static void DrawProjectRow(const Rect& row, const RecentProject& project) {
    const int32_t textLeft = row.left + 60, room = row.right - 14 - textLeft;
    const bool isSilent = project.answer == ProjectAnswer::Silent;
    DrawCard(row, IsUnderPointer(row));
    DrawImage(icons.logo, {row.left + 14, row.top + 19, row.left + 46, row.top + 51});
    DrawText(textLeft, row.top + 14, ShortenMiddle(project.name, room, {17, kSemiBold}),
             isSilent ? kHubSilentText : kHubTitle, 17, kSemiBold);
    DrawText(textLeft, row.top + 39, ShortenMiddle(project.path, room, kSmall),
             isSilent ? kHubSilentText : kHubQuietText, 13, kNormal);
}

// Registers each row with the path of its project, not with its index: the list may change while the user
// moves the pointer, and a click must hit what was seen.
static void DrawList(const HubLayout& layout) {
    editorState.hubRows.clear();
    const Rect& list = layout.list;
    const auto& projects = editorState.recentProjects;
    if (Width(list) < 1) return;
    DrawPanelBox(list, kPanelFill, kPanelLightEdge);
    DrawText(list.left + 20, list.top + 14, L"Moje projekty", kHubTitle, 18, kSemiBold);
    DrawText(list.left + 20, list.top + 42, L"Kliknutim otevres projekt v editoru.", kHubQuietText, 13,
             kNormal);
    if (projects.empty()) {
        DrawText(list.left + 20, list.top + 84, L"Zatim tady neni zadny projekt.", kHubText, 15, kSemiBold);
        DrawWrapped(list.left + 20, list.top + 108, Width(list) - 40,
                    L"Vytvor novy projekt vpravo nebo otevri existujici slozku.");
    }
    for (size_t i = 0; i < layout.rows.size(); ++i) {
        DrawProjectRow(layout.rows[i], projects[i]);
        editorState.hubRows.push_back({layout.rows[i], projects[i].path});
    }
    if (layout.rows.size() < projects.size()) {
        const std::wstring hidden = L"+" + std::to_wstring(projects.size() - layout.rows.size());
        DrawText(list.right - 44, list.top + 16, hidden, kHubQuietText, 14, kSemiBold);
    }
}

static void DrawTemplate(const Rect& card, const std::wstring& title, const std::wstring& description) {
    DrawCard(card, IsUnderPointer(card));
    FillRect({card.left, card.top, card.left + 3, card.bottom}, kAccent);
    DrawText(card.left + 18, card.top + 12, title, kHubTitle, 17, kSemiBold);
    DrawWrapped(card.left + 18, card.top + 38, Width(card) - 32, description);
}

static void DrawTemplates(const HubLayout& layout) {
    const Rect& panel = layout.templates;
    const int32_t left = panel.left + 22, room = Width(panel) - 44;
    DrawPanelBox(panel, kPanelFill, kPanelLightEdge);
    DrawText(left, panel.top + 14, L"Create new project", kHubTitle, 18, kSemiBold);
    DrawWrapped(left, panel.top + 42, room, L"Vyber sablonu. Potom zvolis slozku ve Windows.");

    DrawTemplate(layout.basicCard, L"Zakladni projekt", L"Kamera, svetlo, kostka, zeme a ukazkove objekty.");
    const Rect open{layout.basicCard.right - 68, layout.basicCard.top + 9, layout.basicCard.right - 12,
                    layout.basicCard.top + 33};
    DrawButton(open, kSaveFill, kSaveEdge, false);
    DrawText(open.left + 12, open.top + 5, L"Open", kSaveText, 14, kSemiBold);
    DrawTemplate(layout.emptyCard, L"Prazdny projekt", L"Jen Game Camera a Directional Light.");

    if (panel.bottom - 74 < layout.emptyCard.bottom) return;  // no room for the note
    DrawText(left, panel.bottom - 70, L"Projects are saved locally", kHubText, 14, kSemiBold);
    DrawWrapped(left, panel.bottom - 50, room,
                L"Otevrene a nove projekty se automaticky pridaji do seznamu.");
}

void DrawProjectHub(const HubLayout& layout) {
    FillRect({0, 0, layout.width, layout.height}, kHubFill);
    DrawRail(layout);
    DrawHead(layout);
    DrawList(layout);
    DrawTemplates(layout);
    const std::wstring status =
        ShortenMiddle(editorState.statusMessage, layout.width - 32 - layout.contentLeft, kSmall);
    DrawText(layout.contentLeft, layout.height - 26, status, kHubQuietText, 13, kNormal);
    DrawProjectMenu(layout);
}
