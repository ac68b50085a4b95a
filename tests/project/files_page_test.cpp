#include "project/files_page.h"

#include "base/path_text.h"
#include "project/asset_list.h"
#include "support/capture.h"
#include "support/gestures.h"
#include "support/open_menu.h"
#include "support/picture.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>

static bool IsDrawn(const std::wstring& text) {
    headless.texts.clear();
    RenderFrame();
    return std::ranges::any_of(headless.texts, [&](const DrawnText& drawn) { return drawn.text == text; });
}

// The top left corner of a cell's contents.
static Point CornerOf(const std::wstring& name) {
    RenderFrame();
    for (const PathZone& cell : editorState.filesCells) {
        if (LastComponent(cell.path) == name) {
            return {cell.rect.left, cell.rect.top + 6};
        }
    }
    return {-1, -1};
}

static void PutFiles(const ScratchFolder& folder, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
        const std::wstring number = std::to_wstring(100 + i);
        PutFile(FilesIn(folder) + L"\\f" + number + L".txt", "");
    }
    RefreshAssetList();
}

TEST_CASE("the page shows a folder's path within the project, and the items of that folder only") {
    const ScratchFolder folder;
    StartProject(folder);
    CHECK(IsDrawn(L"Files"));
    CHECK(IsShown(L"scripts"));
    CHECK_FALSE(IsShown(L"Main.scene"));
    OpenFolderNamed(L"Scenes");
    CHECK(IsDrawn(L"Files\\Scenes"));
    CHECK(IsShown(L"Main.scene"));
    CHECK_FALSE(IsShown(L"scripts"));
}

TEST_CASE("the page's hint stands 420 pixels before the window's edge, but not before 260") {
    const ScratchFolder folder;
    StartProject(folder);
    struct {
        int32_t width, left;
    } cases[] = {{640, 260}, {680, 260}, {681, 261}, {1360, 940}};
    for (const auto [width, left] : cases) {
        CAPTURE(width);
        headless.clientSize.width = width;
        headless.texts.clear();
        RenderFrame();
        CHECK(std::ranges::count_if(headless.texts, [left = left](const DrawnText& drawn) {
                  return drawn.text.starts_with(L"Dvojklik: otevrit") && drawn.x == left;
              }) == 1);
    }
}

TEST_CASE("a name of 13 characters is shown whole, a longer one by its first 12 and dots") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\123456789.txt", "");
    PutFile(FilesIn(folder) + L"\\1234567890.txt", "");
    RefreshAssetList();
    CHECK(IsDrawn(L"123456789.txt"));
    CHECK(IsDrawn(L"1234567890.t..."));
}

TEST_CASE("items stand 108 pixels apart, and rows 60 pixels") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFiles(folder, 20);
    editorState.panels.bottomHeight = 260;
    RenderFrame();
    const int32_t top = CurrentLayout().bottomTop + 82;
    CHECK(CornerOf(L"f100.txt") == Point{18, top});
    CHECK(CornerOf(L"f101.txt") == Point{18 + 108, top});
    // The twelfth ends at 18 + 11 * 108 + 98 = 1304; a thirteenth would end beyond 1342.
    CHECK(CornerOf(L"f111.txt") == Point{18 + 11 * 108, top});
    CHECK(CornerOf(L"f112.txt") == Point{18, top + 60});
}

TEST_CASE("a cell that ends 18 pixels before the window's edge stays in its row") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFiles(folder, 20);
    editorState.panels.bottomHeight = 260;
    for (const bool fits : {true, false}) {
        headless.clientSize.width = 18 + 11 * 108 + 98 + 18 - (fits ? 0 : 1);
        RenderFrame();
        const int32_t top = CurrentLayout().bottomTop + 82;
        CHECK(CornerOf(L"f111.txt") == (fits ? Point{18 + 11 * 108, top} : Point{18, top + 60}));
    }
}

TEST_CASE("a row of items is there where its first line is inside the window") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFiles(folder, 20);
    // Rows begin 76 pixels below the panel's top, and every 60 pixels.
    for (const bool fits : {true, false}) {
        editorState.panels.bottomHeight = 76 + 60 + (fits ? 1 : 0);
        CHECK(IsShown(L"f112.txt") == fits);
        CHECK(IsShown(L"f100.txt"));
    }
}

TEST_CASE("a cell is hit from 6 pixels above its corner to 51 below, and 98 pixels to the right") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.panels.bottomHeight = 200;
    const Point corner = CornerOf(L"imported");
    struct {
        int32_t x, y;
        bool hits;
    } cases[] = {{0, 0, true},   {0, -6, true}, {0, -7, false}, {0, 51, true},
                 {0, 52, false}, {97, 0, true}, {98, 0, false}, {-1, 0, false}};
    for (const auto& [x, y, hits] : cases) {
        CAPTURE(x);
        CAPTURE(y);
        const int32_t item = FilesItemAt({corner.x + x, corner.y + y}, CurrentLayout());
        CHECK((item >= 0) == hits);
        RightClick({corner.x + x, corner.y + y});
        CHECK(MenuIsOpen(MenuKind::FilesItem) == hits);
        CHECK(MenuIsOpen(MenuKind::FilesCreate) == !hits);
        CloseMenu();
        CloseMenu();
    }
}

TEST_CASE("a press on an item selects it and says its name") {
    const ScratchFolder folder;
    StartProject(folder);
    Click(FileNamed(L"scripts"));
    CHECK(editorState.statusMessage == L"Vybrana polozka projektu: scripts");
    CHECK(editorState.fileEntries[static_cast<size_t>(editorState.selectedFile)].name == L"scripts");
}

TEST_CASE("a press on empty space opens the create menu, on the path bar nothing") {
    const ScratchFolder folder;
    StartProject(folder);
    Click(EmptyFilesPlace());
    CHECK(MenuIsOpen(MenuKind::FilesCreate));
    CHECK(editorState.statusMessage == L"Otevreno Files menu pro vytvoreni nove polozky.");
    CHECK(IsDrawn(L"Vytvorit blueprint"));
    for (const int32_t below : {40, 60, 73}) {
        CAPTURE(below);
        StartProject(folder);
        Click({500, CurrentLayout().bottomTop + below});
        CHECK_FALSE(MenuIsOpen(MenuKind::FilesCreate));
        CHECK(editorState.statusMessage == L"untouched");
    }
    Click({500, CurrentLayout().bottomTop + 74});
    CHECK(MenuIsOpen(MenuKind::FilesCreate));
}

TEST_CASE("a double click on empty space opens the create menu and chooses nothing in it") {
    const ScratchFolder folder;
    StartProject(folder);
    for (const int32_t y : {800, 780, 770}) {
        CloseMenu();
        DoubleClick({1100, y});
        CHECK(MenuIsOpen(MenuKind::FilesCreate));
        CHECK(editorState.fileEntries.size() == 5);
        CHECK(editorState.statusMessage == L"Otevreno Files menu pro vytvoreni nove polozky.");
    }
    Click(MenuItemAt(OpenMenuState(), 0));
    CHECK(editorState.fileEntries.size() == 6);
}

TEST_CASE("a right click on an item selects it and opens its menu in place of any other") {
    const ScratchFolder folder;
    StartProject(folder);
    RightClick(RowAt(3));
    CHECK(MenuIsOpen(MenuKind::Object));
    RightClick(FileNamed(L"imported"));
    CHECK(editorState.statusMessage == L"Otevreno menu polozky projektu.");
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    CHECK(MenuIsOpen(MenuKind::FilesItem));
    CHECK(editorState.fileEntries[static_cast<size_t>(editorState.selectedFile)].name == L"imported");
    for (const wchar_t* label : {L"Soubor", L"Otevrit", L"Prejmenovat", L"Duplikovat", L"Odstranit"}) {
        CHECK(IsDrawn(label));
    }
}

TEST_CASE("the page's menus are boxes of 194 by 178 and 168 by 150, their items 28 pixels apart") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\Zz.txt", "");
    RefreshAssetList();
    const struct {
        Point at;
        int32_t width, height;
        std::vector<std::wstring> texts;
    } menus[] = {
        {EmptyFilesPlace(),
         194,
         178,
         {L"Files", L"Vytvorit slozku", L"Vytvorit script", L"Vytvorit scene", L"Vytvorit blueprint",
          L"Vytvorit prefab"}},
        {FileNamed(L"Zz.txt"),
         168,
         150,
         {L"Soubor", L"Otevrit", L"Prejmenovat", L"Duplikovat", L"Odstranit"}},
    };
    for (const auto& [at, width, height, texts] : menus) {
        RightClick(at);
        headless.texts.clear();
        RenderFrame();
        const Point corner = OpenMenuState().corner;
        REQUIRE(headless.texts.size() > texts.size());
        const size_t first = headless.texts.size() - texts.size();  // the menu is drawn last
        for (size_t i = 0; i < texts.size(); ++i) {
            const DrawnText& drawn = headless.texts[first + i];
            CHECK(drawn.text == texts[i]);
            CHECK(drawn.x == corner.x + (i == 0 ? 12 : 16));
            CHECK(drawn.y == corner.y + (i == 0 ? 8 : 10 + 28 * static_cast<int32_t>(i)));
        }
        const Point last{corner.x + width - 1, corner.y + height - 1};
        CHECK(PixelAt(last.x, last.y - 20) == Pixel{0x14100D});
        CHECK(PixelAt(last.x - 20, last.y) == Pixel{0x14100D});
        CHECK(PixelAt(last.x - 20, last.y - 1) == Pixel{0x312924});
        CHECK(PixelAt(last.x - 1, last.y - 4) == Pixel{0x312924});
    }
}

TEST_CASE("the menus of the page keep their corner away from the window's end") {
    const ScratchFolder folder;
    StartProject(folder);
    RightClick({1359, 819});
    CHECK(OpenMenuState().corner == Point{1360 - 204, 820 - 188});
    PutFiles(folder, 12);
    RightClick({18 + 11 * 108 + 90, CornerOf(L"f110.txt").y + 40});
    CHECK(MenuIsOpen(MenuKind::FilesItem));
    CHECK(OpenMenuState().corner == Point{1360 - 178, 820 - 160});
}

TEST_CASE("the title of a menu keeps it open, and a press outside closes it and goes on") {
    const ScratchFolder folder;
    StartProject(folder);
    RightClick(FileNamed(L"imported"));
    const Point corner = OpenMenuState().corner;
    Click({corner.x + 20, corner.y + 33});
    CHECK(MenuIsOpen(MenuKind::FilesItem));
    Click(FileNamed(L"scripts"));
    CHECK_FALSE(MenuIsOpen(MenuKind::FilesItem));
    CHECK(editorState.statusMessage == L"Vybrana polozka projektu: scripts");
}

TEST_CASE("while the Console is shown the page takes no click") {
    const ScratchFolder folder;
    StartProject(folder);
    const Point at = FileNamed(L"imported");
    Click({150, CurrentLayout().bottomTop + 20});
    CHECK(editorState.statusMessage == L"Prepnuto na Console.");
    RenderFrame();
    RightClick(at);
    CHECK_FALSE(MenuIsOpen(MenuKind::FilesItem));
    CHECK_FALSE(MenuIsOpen(MenuKind::FilesCreate));
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    Click(at);
    DoubleClick(at);
    CHECK(editorState.filesFolder == FilesIn(folder));
    CHECK(editorState.selectedFile == -1);
    Click({50, CurrentLayout().bottomTop + 20});
    CHECK(editorState.statusMessage == L"Prepnuto na Files.");
}

TEST_CASE("a double click opens the first item of the list, too") {
    const ScratchFolder folder;
    StartProject(folder);
    REQUIRE(editorState.fileEntries.front().kind == AssetKind::Folder);
    OpenFolderNamed(editorState.fileEntries.front().name);
    CHECK(editorState.filesFolder == editorState.fileEntries.front().path);
}

TEST_CASE("an item that has left the list since is neither renamed nor named while it is dragged") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\zz.txt", "");
    RefreshAssetList();
    REQUIRE(editorState.fileEntries.back().name == L"zz.txt");
    RightClick(FileNamed(L"zz.txt"));
    const PopupMenu menu = OpenMenuState();
    CloseMenu();
    Press(FileNamed(L"zz.txt"));
    Move({600, 300});
    CHECK(IsDrawn(L"zz.txt"));

    editorState.fileEntries.pop_back();
    CHECK_FALSE(IsDrawn(L"zz.txt"));
    Release({600, 300});
    editorState.menu = menu;
    Click(MenuItemAt(menu, static_cast<int32_t>(FileItem::Rename)));
    CHECK_FALSE(editorState.menu);
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
}

TEST_CASE("the name of a dragged item follows the pointer") {
    const ScratchFolder folder;
    StartProject(folder);
    Press(FileNamed(L"scripts"));
    Move({600, 300});
    headless.texts.clear();
    RenderFrame();
    CHECK(std::ranges::any_of(headless.texts, [](const DrawnText& text) {
        return text.text == L"scripts" && text.x > 600 && text.x < 640 && text.y > 300 && text.y < 330;
    }));
}

TEST_CASE("a list that has become shorter since the last frame takes no click beyond its end") {
    const ScratchFolder folder;
    StartProject(folder);
    const Point at = FileNamed(L"scripts");
    editorState.fileEntries.clear();
    for (const auto press : {Click, RightClick, DoubleClick}) {
        CloseMenu();
        press(at);
        CHECK(editorState.selectedFile == -1);
        CHECK_FALSE(MenuIsOpen(MenuKind::FilesItem));
    }
    RenderFrame();
}

TEST_CASE("a list that has changed since the last frame takes a click on what was seen, or none") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFiles(folder, 3);
    const Point first = FileNamed(L"f100.txt"), second = FileNamed(L"f101.txt"),
                third = FileNamed(L"f102.txt");
    RightClick(first);
    Click(MenuItemAt(OpenMenuState(), static_cast<int32_t>(FileItem::Delete)));
    Click(third);
    CHECK(editorState.statusMessage == L"Vybrana polozka projektu: f102.txt");
    Click(second);
    CHECK(editorState.statusMessage == L"Vybrana polozka projektu: f101.txt");
    Click(first);  // gone, but for its picture
    CHECK(editorState.statusMessage == L"Otevreno Files menu pro vytvoreni nove polozky.");
}

TEST_CASE("a press before the next frame hits no item of the folder that was left") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFiles(folder, 1);
    const Point file = FileNamed(L"f100.txt");
    OpenFolderNamed(L"scripts");
    Press(file);
    CHECK(editorState.selectedFile == -1);
    CHECK_FALSE(Held<FilesDrag>());
}

TEST_CASE("the page is drawn in every window and with any names") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\12345678901\U0001F600.txt", "");
    PutFiles(folder, 300);
    for (const ClientSize size : {ClientSize{1, 1}, ClientSize{60, 60}, ClientSize{300, 200},
                                  ClientSize{561, 500}, ClientSize{1360, 820}}) {
        headless.clientSize = size;
        RenderFrame();
        for (const PathZone& cell : editorState.filesCells) CHECK(cell.rect.top < size.height);
    }
}

TEST_CASE("the second press of a double click on a menu's row opens nothing that lies under the menu") {
    const ScratchFolder folder;
    StartProject(folder);
    const Point item = FileNamed(L"imported");
    RightClick(item);
    RenderFrame();
    REQUIRE(MenuIsOpen(MenuKind::FilesItem));
    // The menu for an item near the window's lower edge lies over the item.
    const Point row = MenuItemAt(OpenMenuState(), 2);
    Click(row);
    REQUIRE_FALSE(MenuIsOpen(MenuKind::FilesItem));
    RenderFrame();
    editorState.filesCells = {
        {{row.x - 5, row.y - 5, row.x + 5, row.y + 5}, editorState.fileEntries.at(1).path}};
    SendMouse(InputKind::LeftDoubleClick, row);
    Release(row);
    CHECK(editorState.filesFolder == FilesIn(folder));
}
