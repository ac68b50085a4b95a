// Whole pictures of the Project Hub and the Files page, beside them the lists of their texts.
#include "project/asset_list.h"
#include "support/golden_frame.h"
#include "support/picture.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

static void StartWindow(int32_t width, int32_t height) {
    StartPicture(width, height);
    headless.clientSize = {width, height};
    LoadTestIcons();
    editorState = EditorState{};
}

// The Hub with this many projects, and the pointer where nothing reacts.
static void StartHubPicture(int32_t width, int32_t height, int32_t projects) {
    StartWindow(width, height);
    editorState.hubVisible = true;
    editorState.statusMessage = L"Vyber existujici projekt nebo vytvor novy.";
    for (int32_t i = 1; i <= projects; ++i) {
        const std::wstring name = L"Game" + std::to_wstring(i);
        editorState.recentProjects.push_back({.name = name, .path = L"C:\\Users\\Jana\\Projects\\" + name});
    }
    editorState.pointer = {1, 1};
}

TEST_CASE("the Hub without projects says what to do") {
    StartHubPicture(1360, 820, 0);
    CHECK(FrameMatchesGolden("hub_empty"));
}

TEST_CASE("the Hub shows three projects in one column") {
    StartHubPicture(1360, 820, 3);
    editorState.recentProjects[1].name =
        L"A name that is longer than any row of the list could ever show, even here";
    editorState.recentProjects[1].path +=
        L"\\with\\a\\long\\way\\down\\to\\the\\folder\\that\\holds\\it\\all\\in\\the\\end\\of\\it";
    CHECK(FrameMatchesGolden("hub_three_projects"));
}

TEST_CASE("the Hub shows twelve projects in two columns") {
    StartHubPicture(1360, 820, 12);
    CHECK(FrameMatchesGolden("hub_twelve_projects"));
}

TEST_CASE("the project's menu in the bottom right corner stays inside the window") {
    StartHubPicture(1360, 820, 3);
    editorState.menu = PopupMenu{.kind = MenuKind::Project, .corner = {1359, 819}, .item = 2};
    CHECK(FrameMatchesGolden("hub_menu_in_corner"));
}

TEST_CASE("the row under the pointer is lit up") {
    StartHubPicture(1360, 820, 3);
    editorState.pointer = ProjectRow(1);
    CHECK(FrameMatchesGolden("hub_lit_row"));
}

TEST_CASE("the Hub fits into a window of 800 x 600") {
    StartHubPicture(800, 600, 12);
    CHECK(FrameMatchesGolden("hub_800_600"));
}

TEST_CASE("in a window of 300 x 200 the Hub shows what fits") {
    StartHubPicture(300, 200, 3);
    CHECK(FrameMatchesGolden("hub_300_200"));
}

// The Files page with an item of each kind; the scene is empty.
static void StartFilesPicture() {
    StartWindow(1000, 460);
    editorState.camera.position = {0, 1, -6};  // not turned, so that no build's sines take part
    editorState.camera.pitch = 0;
    editorState.projectRoot = L"C:\\Game";
    editorState.filesRoot = editorState.filesFolder = L"C:\\Game\\Files";
    editorState.bottomTab = BottomTab::Files;
    editorState.selectedIndex = -1;
    editorState.statusMessage = L"Projekt otevren: C:\\Game";
    editorState.fileEntries.push_back(AssetEntryFor(L"C:\\Game\\Files\\Scenes", true));
    for (const wchar_t* name : {L"Hero.cpp", L"Tree.obj", L"Level.scene", L"Door.blueprint", L"Coin.prefab",
                                L"wood.png", L"notes.txt", L"a_very_long_name.txt"}) {
        editorState.fileEntries.push_back(AssetEntryFor(editorState.filesRoot + L"\\" + name, false));
    }
    editorState.pointer = {1, 1};
}

TEST_CASE("the Files page shows each kind of item, one of them selected") {
    StartFilesPicture();
    editorState.selectedFile = 5;
    CHECK(FrameMatchesGolden("files_page"));
}

TEST_CASE("the menu of an item lies over the page") {
    StartFilesPicture();
    RightClick(FileNamed(L"Tree.obj"));
    CHECK(FrameMatchesGolden("files_item_menu"));
}

TEST_CASE("the menu for new items lies over the page") {
    StartFilesPicture();
    RenderFrame();
    RightClick({990, 440});
    CHECK(FrameMatchesGolden("files_create_menu"));
}

TEST_CASE("the name of a dragged item is drawn beside the pointer") {
    StartFilesPicture();
    Press(FileNamed(L"Coin.prefab"));
    Move({400, 150});
    CHECK(FrameMatchesGolden("files_dragged_item"));
    Release({400, 20});
}
